#include "bench/bencheditor.h"
#include "bench/benches.h"
#include "document/ansitext.h"
#include "editor/mapevents.h"
#include "editor/viewcommands.h"
#include "render/colorrules.h"
#include "render/labelfont.h"
#include "render/maprenderer.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QStaticText>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace plotwell::bench {
namespace {

constexpr int kWarmUp = 3;

double median(std::vector<double> ms)
{
    std::nth_element(ms.begin(), ms.begin() + std::ptrdiff_t(ms.size() / 2), ms.end());
    return ms[ms.size() / 2];
}

// Median milliseconds of each kind of frame, timed in turns so that all see
// the same load on a machine shared with other work.
std::vector<double> medianMsInTurns(const std::vector<std::function<void()>>& frames, int turns)
{
    for (int i = 0; i < kWarmUp; ++i)
        for (const auto& frame : frames)
            frame();
    std::vector<std::vector<double>> ms(frames.size());
    QElapsedTimer timer;
    for (int i = 0; i < turns; ++i) {
        for (std::size_t k = 0; k < frames.size(); ++k) {
            timer.start();
            frames[k]();
            ms[k].push_back(double(timer.nsecsElapsed()) / 1e6);
        }
    }
    std::vector<double> medians;
    for (auto& m : ms)
        medians.push_back(median(std::move(m)));
    return medians;
}

// Puts the centre of the content's box at the centre of the surface at four
// times the fitted scale.
void zoomToCentre(Editor& editor)
{
    float minX = std::numeric_limits<float>::max(), maxX = -minX, minY = minX, maxY = -minX;
    const auto take = [&](const MapPoint& p) {
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    };
    for (const MapLine& line : editor.doc.lines())
        take(line.p1), take(line.p2);
    for (const MapLabel& label : editor.doc.labels())
        take(label.pos);
    setCurrentScale(editor.view, editor.doc, editor.view.currentScale * 4);
    const float s = editor.view.currentScale;
    editor.view.offsetX = editor.view.mapWidth / 2 - (minX + maxX) / 2 * s;
    editor.view.offsetY = editor.view.mapHeight / 2 - (minY + maxY) / 2 * s;
}

// The least a frame of this geometry can cost with QPainter: every line of a
// colour in one call whatever the record order, the labels laid out before
// the clock starts, nothing outside the image touched. The image has the
// device pixels of the surface, the painter works in logical ones.
class FloorFrame {
public:
    FloorFrame(const Editor& editor, QSize devicePixels, double ratio)
        : m_editor(editor), m_image(devicePixels, QImage::Format_RGB32), m_ratio(ratio)
    {
        m_image.setDevicePixelRatio(ratio);
        m_image.setDotsPerMeterX(3780);
        m_image.setDotsPerMeterY(3780);
        const DisplayOptions& options = editor.display;
        m_font = QGuiApplication::font();
        m_font.setPointSizeF(double(labelFontPoints(editor.view.currentScale)));
        m_font.setStyleStrategy(QFont::NoAntialias);
        for (const MapLine& line : editor.doc.lines())
            m_lineColours.push_back(invertIfNeeded(options, {line.r, line.g, line.b}, kWhite).value());
        for (const MapLabel& label : editor.doc.labels()) {
            m_labelColours.push_back(QColor(invertIfNeeded(options, {label.r, label.g, label.b}, kWhite).value()));
            QStaticText text(fromAnsi(label.text));
            text.setTextFormat(Qt::PlainText);
            text.prepare(QTransform(), QFont(m_font, &m_image));
            m_texts.push_back(text);
        }
    }

    // With inOrder, lines are drawn in record order instead, a pen set
    // whenever the colour changes: the least that drawing which keeps the
    // order (as a map must, for lines that overlap) can cost.
    void draw(bool inOrder = false)
    {
        const float w = float(m_image.width() / m_ratio), h = float(m_image.height() / m_ratio);
        const float ox = m_editor.view.offsetX, oy = m_editor.view.offsetY;
        m_image.fill(Qt::white);
        for (auto& bucket : m_buckets)
            bucket.second.clear();
        QPainter p(&m_image);
        p.setRenderHint(QPainter::Antialiasing, false);
        const auto drawBatch = [&](std::uint32_t colour, const std::vector<QLineF>& batch) {
            if (batch.empty())
                return;
            auto pen = m_pens.find(colour);
            if (pen == m_pens.end()) {
                const ColorRGB c = ColorRGB::fromValue(colour);
                pen = m_pens.emplace(colour, QPen(QColor(c.r, c.g, c.b), devicePen(2))).first;
            }
            p.setPen(pen->second);
            p.drawLines(batch.data(), int(batch.size()));
        };
        std::vector<QLineF> run;
        std::uint32_t runColour = 0;
        const auto& lines = m_editor.doc.lines();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const MapLine& l = lines[i];
            const float x1 = (l.p1.sx + ox) / 15, y1 = (l.p1.sy + oy) / 15;
            const float x2 = (l.p2.sx + ox) / 15, y2 = (l.p2.sy + oy) / 15;
            if (std::max(x1, x2) < -4 || std::max(y1, y2) < -4 || std::min(x1, x2) > w + 4 || std::min(y1, y2) > h + 4)
                continue;
            if (!inOrder) {
                m_buckets[m_lineColours[i]].emplace_back(x1, y1, x2, y2);
                continue;
            }
            if (m_lineColours[i] != runColour) {
                drawBatch(runColour, run);
                run.clear();
                runColour = m_lineColours[i];
            }
            run.emplace_back(x1, y1, x2, y2);
        }
        drawBatch(runColour, run);
        for (const auto& [colour, batch] : m_buckets)
            drawBatch(colour, batch);
        p.setFont(m_font);
        p.setBrush(Qt::black);
        const QPen marker(Qt::black, devicePen(2));
        const float r = m_editor.view.currentScale / 15;
        const auto& labels = m_editor.doc.labels();
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const float x = (labels[i].pos.sx + ox) / 15, y = (labels[i].pos.sy + oy) / 15;
            if (x > w || y > h || x + float(m_texts[i].size().width()) < -4 || y + 30 < 0)
                continue;
            p.setPen(marker);
            p.drawEllipse(QPointF(x, y), r, r);
            p.setPen(m_labelColours[i]);
            p.drawStaticText(QPointF(x, y), m_texts[i]);
        }
    }

private:
    // A pen of whole device pixels, as the surface draws it.
    double devicePen(int width) const { return std::max(1.0, std::round(width * m_ratio)) / m_ratio; }

    const Editor& m_editor;
    QImage m_image;
    double m_ratio;
    QFont m_font;
    std::vector<std::uint32_t> m_lineColours;
    std::vector<QColor> m_labelColours;
    std::vector<QStaticText> m_texts;
    std::map<std::uint32_t, std::vector<QLineF>> m_buckets;
    std::unordered_map<std::uint32_t, QPen> m_pens;
};

// The map of a frame bench on a surface of one device pixel ratio, with
// every kind of frame it times.
class FrameRun {
public:
    FrameRun(int width, int height, std::size_t lines, std::size_t labels, double ratio, bool zoom4)
        : m_bench(width, height, lines, labels, ratio)
    {
        Editor& editor = m_bench.editor;
        fitContentToScreen(editor);
        if (zoom4)
            zoomToCentre(editor);
        m_floor = std::make_unique<FloorFrame>(editor, m_bench.surface.image().size(), ratio);
        // Drag steps of 10 pixels with the Pan tool, to and fro.
        toolIconClicked(editor, ToolId::Pan);
        m_grip = {editor.view.mapWidth / 2, editor.view.mapHeight / 2};
        mapMouseDown(editor, kLeftButton, m_grip);
        showLocation(editor.view, m_grip.x, m_grip.y);
    }

    Editor& editor() { return m_bench.editor; }
    QImageSurface& surface() { return m_bench.surface; }

    // Every kind of frame, in the order of Frame below.
    std::vector<std::function<void()>> frames()
    {
        Editor& editor = m_bench.editor;
        const SurfacePoint grip = m_grip;
        return {
            [this, &editor] {
                drawFrame(m_bench.surface, source());
            }, // the whole frame on one core, as each frame once was
            [&editor] { // the whole picture painted again, on every core
                editor.picture.forget();
                editor.drawLines();
            },
            [this] { m_floor->draw(); },
            [this, &editor] {
                selectEveryHundredth(true);
                advanceFlash(editor.display);
                editor.drawLines();
                selectEveryHundredth(false);
            },
            [this, &editor, grip] {
                const float x = grip.x + (m_dragRight ? 150.0f : 0.0f);
                m_dragRight = !m_dragRight;
                mapMouseMove(editor, kLeftButton, {x, grip.y});
                editor.drawLines();
            },
            [&editor, grip] { // a crosshair mark: the frame, the location printed beside the mark
                editor.tools.crosshair().press(editor.toolContext(), grip);
                editor.tools.state.holdDrawing = false;
            },
            [this] { m_floor->draw(true); },
            [this, &editor, grip] { // the player's marker moved by the game's log, the map standing still
                PlayerMarker& marker = editor.follower.marker;
                marker.shown = true;
                m_markerRight = !m_markerRight;
                marker.at = toWorld(editor.view, {grip.x + (m_markerRight ? 600.0f : 0.0f), grip.y});
                editor.drawLines();
            },
        };
    }

private:
    FrameSource source() const { return m_bench.editor.frameSource(); }
    // Every hundredth line selected while the flash frames are timed.
    void selectEveryHundredth(bool selected)
    {
        MapDocument& doc = m_bench.editor.doc;
        for (std::size_t i = 0; i < doc.lineCount(); i += 100)
            doc.setLineSelected(i, selected);
    }

    BenchEditor m_bench;
    std::unique_ptr<FloorFrame> m_floor;
    SurfacePoint m_grip;
    bool m_dragRight = true;
    bool m_markerRight = false;
};

// The kinds of frame, as FrameRun::frames lists them.
enum Frame { OneCore, Whole, Floor, Flash, Pan, Overlay, OrderedFloor, Marker, FrameKinds };

void printFigures(const char* prefix, const std::vector<double>& ms)
{
    const double frameMs = ms[Whole], floorMs = ms[Floor];
    const auto ratio = [&](double v) { return frameMs > 0 ? v / frameMs : 0.0; };
    std::printf("%sframe_ms: %.2f\n%sfloor_ms: %.2f\n%sratio: %.2f\n", prefix, frameMs, prefix, floorMs, prefix,
                floorMs > 0 ? frameMs / floorMs : 0.0);
    std::printf("%sone_core_frame_ms: %.2f\n%sfull_frame_ms: %.2f\n", prefix, ms[OneCore], prefix, frameMs);
    std::printf("%sflash_frame_ms: %.2f\n%sflash_ratio: %.3f\n", prefix, ms[Flash], prefix, ratio(ms[Flash]));
    std::printf("%span_frame_ms: %.2f\n%span_ratio: %.3f\n", prefix, ms[Pan], prefix, ratio(ms[Pan]));
    std::printf("%soverlay_frame_ms: %.2f\n%soverlay_ratio: %.3f\n", prefix, ms[Overlay], prefix, ratio(ms[Overlay]));
    std::printf("%smarker_frame_ms: %.2f\n%smarker_ratio: %.3f\n", prefix, ms[Marker], prefix, ratio(ms[Marker]));
    // Half the ordered floor is what two cores could reach at best, split perfectly.
    std::printf("%sordered_floor_ms: %.2f\n%sordered_floor_ratio: %.2f\n%shalf_ordered_floor_ratio: %.2f\n", prefix,
                ms[OrderedFloor], prefix, floorMs > 0 ? ms[OrderedFloor] / floorMs : 0.0, prefix,
                floorMs > 0 ? ms[OrderedFloor] / 2 / floorMs : 0.0);
}

} // namespace

int runFrameBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 10000)));
    const auto labelCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 500)));
    const QString sizeText = argText(args, QStringLiteral("--size"), QStringLiteral("1920x1080"));
    const QString view = argText(args, QStringLiteral("--view"), QStringLiteral("fit"));
    // Turns of every kind of frame; fewer make a large map quicker to measure.
    const int turns = int(std::clamp(argValue(args, QStringLiteral("--turns"), 41), 1LL, 1000LL));
    const QStringList parts = sizeText.split(QLatin1Char('x'));
    const int width = parts.size() == 2 ? parts[0].toInt() : 0;
    const int height = parts.size() == 2 ? parts[1].toInt() : 0;
    bool ratioOk = false;
    const double pixelRatio = argText(args, QStringLiteral("--ratio"), QStringLiteral("1")).toDouble(&ratioOk);
    if (width <= 0 || height <= 0 || (view != QLatin1String("fit") && view != QLatin1String("zoom4")) || !ratioOk
        || !(pixelRatio >= 0.25 && pixelRatio <= 8)) {
        std::fprintf(stderr, "frame: --size WxH with positive sizes, --view fit or zoom4, --ratio from 0.25 to 8\n");
        return 2;
    }

    // The size is in logical pixels; the ratio gives the device pixels of
    // each. At a ratio other than 1 the same map is timed at 1 as well, in
    // turns with it, so that both see the same load.
    const bool zoom4 = view == QLatin1String("zoom4");
    std::vector<std::unique_ptr<FrameRun>> runs;
    runs.push_back(std::make_unique<FrameRun>(width, height, lineCount, labelCount, pixelRatio, zoom4));
    if (pixelRatio != 1)
        runs.push_back(std::make_unique<FrameRun>(width, height, lineCount, labelCount, 1.0, zoom4));
    std::vector<std::function<void()>> frames;
    for (const auto& run : runs)
        for (auto& frame : run->frames())
            frames.push_back(std::move(frame));
    const std::vector<double> ms = medianMsInTurns(frames, turns);

    const Editor& editor = runs.front()->editor();
    std::printf("lines: %zu\nlabels: %zu\nsize: %dx%d\nview: %s\n", editor.doc.lineCount(), editor.doc.labelCount(),
                width, height, qPrintable(view));
    const QSize device = runs.front()->surface().image().size();
    std::printf("pixel_ratio: %g\ndevice_size: %dx%d\n", pixelRatio, device.width(), device.height());
    std::printf("scale: %g\n", double(editor.view.currentScale));
    printFigures("", std::vector<double>(ms.begin(), ms.begin() + FrameKinds));
    if (runs.size() > 1)
        printFigures("ratio1_", std::vector<double>(ms.begin() + FrameKinds, ms.end()));
    const QString save = argText(args, QStringLiteral("--png"), QString());
    if (!save.isEmpty())
        runs.front()->surface().image().save(save);
    return 0;
}

} // namespace plotwell::bench
