#include "render/bandpainter.h"

#include <QThread>

#include <algorithm>

namespace plotwell {
namespace {

constexpr int kMaxBands = 4;
// No band thinner than this many rows: a small surface is drawn at once.
constexpr int kMinBandRows = 16;

// A label's text takes about as long to draw as this many lines.
constexpr double kLabelWeight = 8;
// Records looked at to place the cuts, at most about.
constexpr std::size_t kCutSample = 1 << 16;

// The rows that cut a picture of this size in device pixels into bands of
// about equal work: a line counts at the row of its middle and a label at its
// own row, when that lies on the picture; cuts[i] is where band i starts,
// cuts[bands] the height.
std::vector<int> bandCuts(const FrameSource& source, QSize size, double ratio, int bands)
{
    const int height = size.height();
    std::vector<double> rows(std::size_t(height) + 1, 0);
    const float perRow = float(15 / ratio); // twips
    const float right = float(size.width()) * perRow, bottom = float(height) * perRow;
    const auto count = [&](float x, float y, double weight) {
        if (x >= 0 && x < right && y >= 0 && y < bottom)
            rows[std::min(std::size_t(y / perRow), std::size_t(height))] += weight;
    };
    const View& view = source.view;
    // On a large map a sample tells where the work lies as well as every
    // record would, and the cuts come before any band can start.
    const auto& lines = source.doc.lines();
    const auto& labels = source.doc.labels();
    const std::size_t stride = std::max<std::size_t>(1, (lines.size() + labels.size()) / kCutSample);
    if (source.display.showLines) {
        for (std::size_t i = 0; i < lines.size(); i += stride) {
            const MapLine& line = lines[i];
            if (lineShown(source, line))
                count((line.p1.sx + line.p2.sx) / 2 + view.offsetX, (line.p1.sy + line.p2.sy) / 2 + view.offsetY, 1);
        }
    }
    if (source.display.showLabels) {
        for (std::size_t i = 0; i < labels.size(); i += stride) {
            const MapLabel& label = labels[i];
            if (labelShown(source, label))
                count(label.pos.sx + view.offsetX, label.pos.sy + view.offsetY, kLabelWeight);
        }
    }
    double total = 0;
    for (double& r : rows)
        total += r, r = total; // rows[y]: the work of rows 0..y
    std::vector<int> cuts{0};
    int y = 0;
    for (int i = 1; i < bands; ++i) {
        const double share = total * i / bands;
        while (y < height - 1 && rows[std::size_t(y)] < share)
            ++y;
        if (total <= 0) // nothing to draw: even bands
            y = height * i / bands;
        y = std::clamp(y, cuts.back() + kMinBandRows, height - (bands - i) * kMinBandRows);
        cuts.push_back(y);
    }
    cuts.push_back(height);
    return cuts;
}

// One box of device pixels of a surface cleared to the background, and the
// records that can reach into it drawn.
void paintPart(ImageSurface& surface, const FrameSource& source, const BandPainter::Start& start, const QRect& part)
{
    surface.setBackColor(start.background);
    surface.setPenWidth(start.penWidth);
    surface.setBand(part);
    surface.clear();
    MapPart what;
    what.showSelection = false;
    const double twipsPerPixel = 15 / surface.pixelRatio();
    what.within = QRectF(part.x() * twipsPerPixel, part.y() * twipsPerPixel, part.width() * twipsPerPixel,
                         part.height() * twipsPerPixel);
    drawMap(surface, source, what);
}

} // namespace

BandPainter::BandPainter(int bands) : m_bands(bands > 0 ? bands : std::clamp(QThread::idealThreadCount(), 1, kMaxBands))
{
}

void BandPainter::addWorkers(std::size_t count)
{
    while (m_workers.size() < count)
        m_workers.push_back(std::make_unique<BandWorker>());
}

void BandPainter::paintWhole(ImageSurface& first, const FrameSource& source, const Start& start)
{
    const int height = first.image().height();
    const int width = first.image().width();
    const int bands = std::clamp(height / kMinBandRows, 1, m_bands);
    const std::vector<int> cuts =
        bands > 1 ? bandCuts(source, first.image().size(), start.ratio, bands) : std::vector<int>{0, height};
    const auto band = [&](int i) {
        return QRect(0, cuts[std::size_t(i)], width, cuts[std::size_t(i) + 1] - cuts[std::size_t(i)]);
    };
    addWorkers(std::size_t(bands - 1));
    for (int i = 1; i < bands; ++i) {
        const QRect rows = band(i);
        m_workers[std::size_t(i - 1)]->start(
            start.widthTwips, start.heightTwips, start.ratio,
            [&source, start, rows](ImageSurface& s) { paintPart(s, source, start, rows); });
    }
    paintPart(first, source, start, band(0));
    first.setBand(first.image().rect());
    for (int i = 1; i < bands; ++i)
        first.copyPart(m_workers[std::size_t(i - 1)]->finish(), band(i));
}

void BandPainter::paintParts(ImageSurface& target, const FrameSource& source, const Start& start,
                             const std::vector<QRect>& parts)
{
    // Records drawn whole reach beyond their part: each part is drawn on a
    // surface of its own, and only the part is copied into the picture. The
    // first is drawn in this thread, which hands nothing over for the one
    // strip of a straight pan; a worker draws the second of a slanted pan
    // meanwhile, and any more after it.
    if (parts.empty())
        return;
    const auto onWorker = [&](const QRect& part) {
        m_workers.front()->start(start.widthTwips, start.heightTwips, start.ratio,
                                 [&source, start, part](ImageSurface& s) { paintPart(s, source, start, part); });
    };
    if (parts.size() > 1) {
        addWorkers(1);
        onWorker(parts[1]);
    }
    paintOwnPart(source, start, parts.front());
    target.copyPart(m_own->image(), parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i) {
        if (i > 1)
            onWorker(parts[i]);
        target.copyPart(m_workers.front()->finish(), parts[i]);
    }
}

void BandPainter::paintOwnPart(const FrameSource& source, const Start& start, const QRect& part)
{
    if (!m_own)
        m_own = makeImageSurface(start.widthTwips, start.heightTwips, start.ratio);
    else if (m_own->width() != start.widthTwips || m_own->height() != start.heightTwips)
        m_own->resize(start.widthTwips, start.heightTwips);
    m_own->setPixelRatio(start.ratio);
    paintPart(*m_own, source, start, part);
}

} // namespace plotwell
