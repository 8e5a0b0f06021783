#include "render/mappicture.h"
#include "platform/qimagesurface.h"
#include "render/colorrules.h"

#include "render/overlays.h"
#include "tests/support/busymap.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr float kPx = 15;

// Pixels that differ, those of them in the strips a pan by moved (in device
// pixels) uncovers, and whether the surfaces leave the same drawing state.
std::tuple<int, int, bool> compare(const QImageSurface& a, const QImageSurface& b, QPoint moved)
{
    int count = 0, inStrips = 0;
    const int w = a.image().width(), h = a.image().height();
    for (int y = 0; y < h; ++y) {
        const auto* rowA = reinterpret_cast<const QRgb*>(a.image().constScanLine(y));
        const auto* rowB = reinterpret_cast<const QRgb*>(b.image().constScanLine(y));
        for (int x = 0; x < w; ++x) {
            const bool differs = rowA[x] != rowB[x];
            count += differs;
            inStrips += differs
                && ((moved.x() < 0 ? x >= w + moved.x() : x < moved.x())
                    || (moved.y() < 0 ? y >= h + moved.y() : y < moved.y()));
        }
    }
    const auto s = a.state(), t = b.state();
    const bool same = s.pen == t.pen && s.fill == t.fill && s.penWidth == t.penWidth && s.textX == t.textX
        && s.textY == t.textY && s.fontPoints == t.fontPoints && s.bold == t.bold;
    return {count, inStrips, same};
}

// At each device pixel ratio of a screen: whole ones, and one where a device
// pixel is no whole number of twips.
class MapPictureAt : public testing::TestWithParam<double> {};
INSTANTIATE_TEST_SUITE_P(Ratios, MapPictureAt, testing::Values(1.0, 1.5, 2.0));

TEST_P(MapPictureAt, EveryFrameIsThatOfAWholeSingleThreadedFrameWithTheSelectionOnTop)
{
    const double ratio = GetParam();
    QImageSurface screen(320 * kPx, 240 * kPx, ratio), reference(320 * kPx, 240 * kPx, ratio);
    EditorOn w(screen);
    Editor& e = w.editor;
    fillBusyMap(e);
    e.doc.clearSelection();
    for (int i = 0; i < 12; ++i)
        e.doc.setLineSelected(std::size_t(i * 300), true);
    e.doc.setLabelSelected(7, true);
    setCurrentScale(e.view, e.doc, 20);
    e.view.offsetX = 600;
    e.view.offsetY = 300;
    e.underlay.picture = QImage(50, 30, QImage::Format_RGB32);
    e.underlay.picture.fill(qRgb(30, 90, 150));
    MapPicture picture(3); // more bands than cores, and uneven ones
    std::mt19937 rng(6);
    const auto pick = [&rng](int n) { return int(rng() % unsigned(n)); };
    TakenRecords taken;
    const auto onBoth = [&](const std::function<void(QImageSurface&)>& f) { f(screen), f(reference); };

    const std::vector<std::pair<const char*, std::function<void()>>> steps = {
        {"drag by whole pixels",
         [&] { adjustOffset(e.view, float(kPx / ratio * (pick(41) - 20)), float(kPx / ratio * (pick(21) - 10))); }},
        {"arrow key", [&] { adjustOffset(e.view, pick(2) ? 10 : -500, 0); }},
        {"zoom", [&] { setCurrentScale(e.view, e.doc, e.view.currentScale * (pick(2) ? 1.25f : 0.8f)); }},
        {"option",
         [&] {
             bool* options[] = {&e.display.showLines,
                                &e.display.showLabels,
                                &e.display.invertChecked,
                                &e.display.heightFilterOn,
                                &e.display.stereoChecked,
                                &e.display.flashChecked,
                                &e.display.layerChecked[std::size_t(pick(kLayerCount))]};
             bool& option = *options[pick(7)];
             option = !option;
         }},
        {"edit",
         [&] {
             const int what = pick(5);
             const auto layer = std::int16_t(pick(kLayerCount));
             if (what == 0)
                 addTestLine(e, float(pick(200) - 40), 70, 5, float(pick(200) - 40), 90, 5, {0, 0, 255});
             else if (what == 1)
                 addTestLabel(e, float(pick(200) - 40), float(pick(200) - 40), 0, kWhite, "Edit");
             else if (what == 2)
                 e.doc.setLineColor(std::size_t(pick(int(e.doc.lineCount()))), {250, 120, 0});
             else if (what == 3)
                 for (std::size_t i = std::size_t(pick(9)); i < e.doc.labelCount(); i += 9)
                     e.doc.setLabelColor(i, {250, 120, 0});
             else if (taken.empty())
                 taken = e.doc.takeRecordsWhere([&](std::int16_t l, bool) { return l == layer; });
             else
                 e.doc.putBack(taken, e.view.currentScale); // undo: back between the others
         }},
        {"player moves",
         [&] {
             e.follower.marker.shown = pick(5) != 0;
             e.follower.marker.at = MapPoint{float(pick(200) - 40), float(pick(200) - 40), 0};
         }},
        {"select",
         [&] {
             const std::size_t i = std::size_t(pick(int(e.doc.lineCount())));
             e.doc.setLineSelected(i, !e.doc.lines()[i].selected);
         }},
        {"flash", [&] { advanceFlash(e.display); }},
        {"background",
         [&] {
             const ColorRGB back = pick(2) ? kBlack : kWhite;
             onBoth([&](QImageSurface& s) { s.setBackColor(back); });
         }},
        {"underlay",
         [&] { // on, it stops pans from scrolling
             e.underlay.underlayOn = pick(3) == 0;
             QImage other(50, 30, QImage::Format_RGB32);
             other.fill(qRgb(pick(256), 90, 150));
             e.underlay.picture = pick(2) ? other : e.underlay.picture;
         }},
        {"resize",
         [&] {
             const float width = float(300 + pick(40)) * kPx;
             onBoth([&](QImageSurface& s) { s.resize(width, 240 * kPx); });
         }},
        {"stand still", [] {}},
    };
    // As a surface that has drawn a frame before: label markers keep the pen's width.
    onBoth([](QImageSurface& s) { s.setPenWidth(2); });
    int scrolled = 0, overlaid = 0, pans = 0;
    for (int step = 0; step < 160; ++step) {
        const auto& [name, change] = steps[std::size_t(pick(int(steps.size())))];
        const QPointF from(e.view.offsetX, e.view.offsetY);
        change();
        // The view moved by whole device pixels: a drag, or an arrow key's
        // 10 twips where they make a device pixel.
        const QPointF by = (QPointF(e.view.offsetX, e.view.offsetY) - from) / kPx * ratio;
        const QPoint moved = (by - QPointF(by.toPoint())).manhattanLength() < 1e-6 ? by.toPoint() : QPoint();
        const bool wasScrolled = picture.settling();
        QRegion shown;
        screen.onRefresh = [&](const QRegion& changed) { shown = changed; };
        picture.compose(screen, e.frameSource());
        drawFrame(reference, e.frameSource());
        const QImageSurface::State frameEnd = reference.state();
        drawOverlays(reference, e.frameSource());
        reference.setState(frameEnd);

        const auto [differing, inStrips, sameState] = compare(screen, reference, moved);
        EXPECT_EQ(inStrips, 0) << step << ": the strips a pan uncovers are drawn afresh";
        // QPainter does not draw a line moved by whole pixels exactly as it drew it before, nor
        // do the offsets scale exactly: a scrolled picture may have a few line edges one pixel
        // off, about one per hundred lines for each pan, until it is painted whole.
        pans = picture.settling() ? pans + !moved.isNull() : 0;
        EXPECT_LE(differing, pans * int(e.doc.lineCount() / 100 * ratio * ratio)) << step << ": " << name;
        EXPECT_TRUE(sameState) << step << ": " << name;
        scrolled += picture.settling() && !wasScrolled;
        if (std::string(name) == "flash" && !wasScrolled && e.doc.hasSelection()) {
            ++overlaid;
            int area = 0;
            for (const QRect& r : shown)
                area += r.width() * r.height();
            EXPECT_LT(area, screen.image().width() * screen.image().height()) << "a flash shows only the selection";
        }
        if (pick(4) == 0) {
            // A tool draws between frames: the crosshair's text, the rubber band.
            const float x = float(pick(300)) * kPx, y = float(pick(200)) * kPx;
            onBoth([&](QImageSurface& s) {
                s.setTextPosition(x, y);
                s.print("Loc: 12, 34");
                s.line(x, y, x + 40 * kPx, y + 20 * kPx);
            });
        }
    }
    EXPECT_GT(scrolled, 5);
    EXPECT_GT(overlaid, 3);
    // A view that stands still shows only the selection again, however long.
    for (int frame = 0; frame < 3 * MapPicture::kSettleFrames; ++frame) {
        const bool settled = !picture.settling();
        QRegion shown;
        screen.onRefresh = [&](const QRegion& changed) { shown = changed; };
        picture.compose(screen, e.frameSource());
        EXPECT_TRUE(!settled || shown != QRegion(screen.image().rect())) << frame;
    }
}

TEST(MapPicture, APanDrawsEveryRowOfTheStripsItUncovers)
{
    // Too short to be cut into bands, so no band's worker exists before the first pan's strips need one.
    QImageSurface screen(200 * kPx, 24 * kPx), reference(200 * kPx, 24 * kPx);
    EditorOn w(screen);
    Editor& e = w.editor;
    fillBusyMap(e);
    e.doc.clearSelection();
    e.underlay.underlayOn = false; // a picture under the map is not scrolled
    setCurrentScale(e.view, e.doc, 20);
    e.view.offsetX = 600;
    e.view.offsetY = 300;
    screen.setPenWidth(2);
    MapPicture picture;
    for (const QPoint move : {QPoint(-10, 0), QPoint(10, 0), QPoint(0, -10), QPoint(0, 10), QPoint(-7, 5)}) {
        picture.compose(screen, e.frameSource());
        adjustOffset(e.view, float(move.x()) * kPx, float(move.y()) * kPx);
        picture.compose(screen, e.frameSource());
        ASSERT_TRUE(picture.settling());
        drawFrame(reference, e.frameSource());
        EXPECT_EQ(std::get<1>(compare(screen, reference, move)), 0) << move.x() << "," << move.y();
    }
}

TEST(MapPicture, APanScrollsTheStripsInOnlyByWholeDevicePixels)
{
    const struct {
        double ratio;
        float twips;
        bool scrolls;
    } cases[] = {
        {1, 15, true},      {1, 10, false},    {1.5, 10, true},
        {1.5, 15, false},   {2, 7.5f, true},   {2, 10, false},
        {1.25, 12, true},   {1.25, 15, false}, {1.75f, float(15 / 1.75), true},
        {1.75f, 15, false},
    };
    for (const auto& c : cases) {
        QImageSurface screen(200 * kPx, 100 * kPx, c.ratio);
        EditorOn w(screen);
        Editor& e = w.editor;
        fillBusyMap(e);
        e.underlay.underlayOn = false;
        screen.setPenWidth(2); // as a frame with lines leaves it
        MapPicture picture;
        picture.compose(screen, e.frameSource());
        adjustOffset(e.view, c.twips, -3 * c.twips);
        picture.compose(screen, e.frameSource());
        EXPECT_EQ(picture.settling(), c.scrolls) << c.ratio << " " << c.twips;
    }
}

} // namespace
