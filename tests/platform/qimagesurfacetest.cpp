#include "platform/qimagesurface.h"

#include "tests/platform/naivesurface.h"
#include "tests/support/busymap.h"
#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <set>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kGreen{0, 160, 0};
constexpr float kPx = 15; // twips to a pixel

QRgb pixel(ColorRGB c)
{
    return qRgb(c.r, c.g, c.b);
}

std::set<QRgb> coloursIn(const QImage& image)
{
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    return colours;
}

int differingPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    return count;
}

// Where each thing lands and that nothing is antialiased is shown against the
// naive surface below; this is about the text's size and place, which both share.
TEST(QImageSurface, ALabelsTextHasItsSizeAndPlaceAndAFrameIsPresentedOnce)
{
    QImageSurface surface(200 * kPx, 120 * kPx);
    int presented = 0;
    surface.onRefresh = [&](const QRegion&) { ++presented; };
    EditorOn w(surface);
    setCurrentScale(w.editor.view, w.editor.doc, 100);
    // At scale 100 a world unit is 100 twips: a label at (30 px, 15 px).
    addTestLabel(w.editor, 0.3f * kPx, 0.15f * kPx, 0, kGreen, "Hi");
    w.editor.drawLines();
    EXPECT_EQ(presented, 1);

    const QImage& image = surface.image();
    EXPECT_EQ(image.size(), QSize(200, 120));
    // The text's top-left corner is at the label: its ink lies right of and
    // below the label point, within a line of 20-point text.
    int top = image.height(), left = image.width(), bottom = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == pixel(kGreen))
                top = std::min(top, y), left = std::min(left, x), bottom = std::max(bottom, y);
    EXPECT_TRUE(left >= 30 && left <= 34) << left;
    EXPECT_TRUE(top >= 15 && top <= 15 + 12) << top;
    EXPECT_TRUE(bottom <= 15 + 29 && bottom - top >= 12) << "20-point capitals are about 19 pixels high";
}

TEST(QImageSurface, LinesShowAtOnceClearResizeAndPictures)
{
    QImageSurface surface(40 * kPx, 40 * kPx);
    surface.setPenWidth(2);
    surface.setPenColor(kBlue);
    surface.line(-3e7f, 20 * kPx, 3e7f, 20 * kPx);
    surface.line(30 * kPx, -1e30f, 30 * kPx, 1e30f);
    surface.line(0, 0, std::numeric_limits<float>::infinity(), 10);
    surface.line(std::numeric_limits<float>::quiet_NaN(), 0, 10, 10);
    // No refresh: an overlay drawn between frames shows as it is drawn.
    EXPECT_EQ(surface.image().pixel(1, 20), pixel(kBlue));
    EXPECT_EQ(surface.image().pixel(38, 20), pixel(kBlue));
    EXPECT_EQ(surface.image().pixel(30, 5), pixel(kBlue));

    surface.resize(80 * kPx, 30 * kPx);
    EXPECT_EQ(surface.image().size(), QSize(80, 30));
    EXPECT_EQ(surface.image().pixel(20, 20), pixel(kBlue)) << "the drawing stays at the top left";
    EXPECT_EQ(surface.image().pixel(60, 20), pixel(kWhite));

    surface.line(0, 25 * kPx, 50 * kPx, 25 * kPx);
    surface.setBackColor(ColorRGB{0xf0, 0x01, 0x00});
    surface.clear();
    EXPECT_EQ(coloursIn(surface.image()), (std::set<QRgb>{qRgb(0xf0, 0x01, 0x00)})) << "pending lines are dropped";

    // Copied and stretched to twice its size at (2, 2) px, and combined with OR at (12, 12) px.
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(qRgb(0x0f, 0x30, 0x00));
    const QRectF source(0, 0, 4 * kPx, 4 * kPx);
    surface.paintPicture(picture, QRectF(2 * kPx, 2 * kPx, 8 * kPx, 8 * kPx), source, RasterOp::Copy);
    surface.paintPicture(picture, QRectF(12 * kPx, 12 * kPx, 4 * kPx, 4 * kPx), source, RasterOp::Or);
    const QImage& image = surface.image();
    EXPECT_EQ(image.pixel(2, 2), qRgb(0x0f, 0x30, 0x00));
    EXPECT_EQ(image.pixel(9, 9), qRgb(0x0f, 0x30, 0x00));
    EXPECT_EQ(image.pixel(10, 10), qRgb(0xf0, 0x01, 0x00));
    EXPECT_EQ(image.pixel(13, 13), qRgb(0xff, 0x31, 0x00));

    // Stretched a hundred thousand times, far past the surface: the part on
    // the surface is the middle of the first pixel.
    QImage two(2, 1, QImage::Format_RGB32);
    two.setPixel(0, 0, qRgb(0xc0, 0x10, 0x20));
    two.setPixel(1, 0, qRgb(0x00, 0x00, 0xff));
    surface.paintPicture(two, QRectF(-49990 * kPx, 0, 200000 * kPx, 100000 * kPx), QRectF(0, 0, 2 * kPx, kPx),
                         RasterOp::Copy);
    EXPECT_EQ(surface.image().pixel(10, 5), qRgb(0xc0, 0x10, 0x20));
}

// At each device pixel ratio of a screen: plain, fractional and double.
class QImageSurfaceAt : public testing::TestWithParam<double> {};
INSTANTIATE_TEST_SUITE_P(Ratios, QImageSurfaceAt, testing::Values(1.0, 1.5, 2.0));

TEST_P(QImageSurfaceAt, FramesAreThoseOfDrawingEveryOperationDirectly)
{
    const double ratio = GetParam();
    const struct {
        const char* name;
        float scale;
        bool stereo, heightFilter;
        ColorRGB back;
    } cases[] = {
        {"plain", 2, false, false, kWhite},        {"zoomed in", 9.5f, false, false, kWhite},
        {"large labels", 60, false, false, kBlue}, {"height filter", 2, false, true, kWhite},
        {"stereo", 3, true, false, kBlack},        {"beyond the zoom strip", 150, false, false, kWhite},
    };
    for (const auto& c : cases) {
        QImageSurface surface(300 * kPx, 220 * kPx, ratio);
        NaiveSurface naive(300, 220, ratio);
        EditorOn real(surface), plain(naive);
        for (EditorOn* w : {&real, &plain}) {
            Editor& e = w->editor;
            e.services.surface.setBackColor(c.back);
            fillBusyMap(e);
            e.view.currentScale = c.scale;
            rescaleAll(e.view, e.doc);
            e.view.offsetX = 300;
            e.view.offsetY = 250;
            e.view.currentZ = 40;
            e.display.stereoChecked = c.stereo;
            e.display.heightFilterOn = c.heightFilter;
            e.display.flashLevel = 127;
            // A frame of markers drawn with the first pen width, then one
            // with lines: remembered circle pixels must be those of their pen.
            e.display.showLines = false;
            drawFrame(e.services.surface, e.frameSource());
            e.display.showLines = true;
            drawFrame(e.services.surface, e.frameSource());
        }
        EXPECT_EQ(differingPixels(surface.image(), naive.image()), 0) << c.name;
        EXPECT_GT(coloursIn(surface.image()).size(), 4u) << c.name << " drew something";
    }
}

TEST_P(QImageSurfaceAt, PensAndTextTakeTheDevicePixels)
{
    const double ratio = GetParam();
    // A surface that drew at one device pixel to one, then moved to a screen of the ratio.
    QImageSurface surface(60 * kPx, 40 * kPx);
    surface.setPenColor(kBlue);
    for (const int width : {1, 2, 3}) {
        surface.setPenWidth(width);
        surface.line(0, 0, 60 * kPx, 40 * kPx);
    }
    surface.setPixelRatio(ratio);
    ASSERT_EQ(surface.image().size(), QSize(int(std::ceil(60 * ratio)), int(std::ceil(40 * ratio))));
    surface.setPixelRatio(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(surface.pixelRatio(), 1) << "no ratio is taken as one";
    surface.setPixelRatio(ratio);
    const int middle = surface.image().width() / 2;
    // A pen w logical pixels wide covers round(w x ratio) device rows, wherever the line lies.
    for (const int width : {1, 2, 3}) {
        for (float y = 10 * kPx; y < 11 * kPx; y += 2.5f) {
            surface.clear();
            surface.setPenWidth(width);
            surface.setPenColor(kBlue);
            surface.line(2 * kPx, y, 58 * kPx, y);
            int rows = 0;
            for (int row = 0; row < surface.image().height(); ++row)
                rows += surface.image().pixel(middle, row) == pixel(kBlue);
            EXPECT_EQ(rows, std::lround(width * ratio)) << "width " << width << " at " << y;
        }
    }

    // Text is laid out in logical pixels and drawn at device ones: not a
    // blown-up copy of the text at one device pixel to a logical one.
    const auto printed = [](double r) {
        QImageSurface s(60 * kPx, 20 * kPx, r);
        s.setPenColor(kGreen);
        s.setFont(10, false);
        s.setTextPosition(2 * kPx, 2 * kPx);
        s.print("Kelethin");
        return s.image();
    };
    const QImage text = printed(ratio);
    const QImage atOne = printed(1);
    const QImage blownUp = atOne.scaled(text.size());
    const auto inkOf = [](const QImage& image) {
        int ink = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ink += image.pixel(x, y) == pixel(kGreen);
        return ink;
    };
    int notBlownUp = 0;
    for (int y = 0; y < text.height(); ++y)
        for (int x = 0; x < text.width(); ++x)
            notBlownUp += text.pixel(x, y) != blownUp.pixel(x, y);
    const int ink = inkOf(text);
    EXPECT_GT(inkOf(atOne), 40);
    if (ratio > 1) {
        EXPECT_GT(ink, inkOf(atOne)) << "more device pixels to the glyphs";
        EXPECT_GT(notBlownUp, ink / 10) << "drawn at device pixels, not scaled up";
    } else {
        EXPECT_EQ(notBlownUp, 0);
    }
}

TEST_P(QImageSurfaceAt, APictureAtItsOwnSizeKeepsItsPixelsAndAStretchedOneIsSmooth)
{
    const double ratio = GetParam();
    QImageSurface surface(40 * kPx, 20 * kPx, ratio);
    // Cells of 2 x 2 pixels, white and black, like the tracing paper's mesh.
    QImage cells(16, 16, QImage::Format_RGB32);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            cells.setPixel(x, y, (x / 2 + y / 2) % 2 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    const QRectF whole(0, 0, 16 * kPx, 16 * kPx);
    surface.paintPicture(cells, whole, whole, RasterOp::Copy);
    surface.paintPicture(cells, QRectF(20 * kPx, 0, 19 * kPx, 19 * kPx), whole, RasterOp::Copy);
    const QImage& image = surface.image();
    const int own = int(16 * ratio), stretched = int(20 * ratio);
    EXPECT_EQ(coloursIn(image.copy(0, 0, own, own)), (std::set<QRgb>{qRgb(0, 0, 0), qRgb(255, 255, 255)}));
    EXPECT_EQ(image.pixel(own - 1, own - 1), qRgb(255, 255, 255)) << "the last cell ends at the picture's edge";
    EXPECT_GT(coloursIn(image.copy(stretched, 0, own, own)).size(), 2u);
}

TEST_P(QImageSurfaceAt, AKeptPictureComesBackWhereverItWasDrawnOver)
{
    const double ratio = GetParam();
    QImageSurface surface(240 * kPx, 160 * kPx, ratio);
    surface.setPenWidth(2);
    surface.setPenColor(kBlue);
    surface.line(0, 0, 240 * kPx, 160 * kPx);
    EXPECT_FALSE(surface.restorePicture()) << "none kept yet";
    surface.keepPicture();
    const QImage kept = surface.image().copy();

    // Everything that draws: lines, circles, text, parts of other pictures.
    surface.setPenColor(kGreen);
    surface.line(70 * kPx, 0, 0, 50 * kPx);
    surface.setFillColor(kRed);
    surface.circle(40 * kPx, 30 * kPx, 5 * kPx, kBlack);
    surface.setTextPosition(10 * kPx, 40 * kPx);
    surface.print("Loc: 1, 2");
    QImage other(surface.image().size(), QImage::Format_RGB32);
    other.fill(qRgb(9, 9, 9));
    surface.copyPart(other, QRect(3, 3, 20, 7));
    ASSERT_GT(differingPixels(surface.image(), kept), 0);
    QRegion shown;
    surface.onRefresh = [&](const QRegion& changed) { shown = changed; };
    surface.refresh();
    EXPECT_TRUE(surface.restorePicture());
    EXPECT_EQ(differingPixels(surface.image(), kept), 0);
    EXPECT_FALSE(surface.restorePicture()) << "put back once";
    surface.refresh();
    int area = 0;
    for (const QRect& r : shown)
        area += r.width() * r.height();
    EXPECT_GT(area, 0);
    EXPECT_LT(area, surface.image().width() * surface.image().height() / 2) << "only where it was drawn over";

    // A cleared, resized or scrolled image has lost the picture.
    for (const auto& lose : std::vector<std::function<void()>>{
             [&] { surface.clear(); }, [&] { surface.resize(70 * kPx, 60 * kPx); }, [&] { surface.scroll(1, 0); }}) {
        surface.keepPicture();
        lose();
        EXPECT_FALSE(surface.restorePicture());
    }
}

TEST_P(QImageSurfaceAt, ScrollingMovesWhatStaysInSightFarAndWide)
{
    const double ratio = GetParam();
    QImageSurface surface(50 * kPx, 30 * kPx, ratio);
    QImage expected(surface.image().size(), QImage::Format_RGB32);
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x)
            expected.setPixel(x, y, qRgb(x, y, (x * 7 + y) % 256));
    surface.copyPart(expected, expected.rect());
    const QImage copyBefore = surface.image();
    std::mt19937 rng(4);
    // Far enough one way, then the other, that the pixels move back to the
    // middle of their room several times.
    for (int step = 0; step < 60; ++step) {
        const int dx = int(rng() % 9) - (step < 30 ? 1 : 7), dy = int(rng() % 7) - (step < 30 ? 5 : 1);
        surface.scroll(dx, dy);
        QImage moved(expected.size(), QImage::Format_RGB32);
        moved.fill(0);
        for (int y = 0; y < moved.height(); ++y)
            for (int x = 0; x < moved.width(); ++x)
                if (expected.valid(x - dx, y - dy))
                    moved.setPixel(x, y, expected.pixel(x - dx, y - dy));
        expected = moved;
        int wrong = 0;
        for (int y = std::max(0, dy); y < expected.height() + std::min(0, dy); ++y)
            for (int x = std::max(0, dx); x < expected.width() + std::min(0, dx); ++x)
                wrong += surface.image().pixel(x, y) != expected.pixel(x, y);
        ASSERT_EQ(wrong, 0) << step;
        // What the uncovered strips show is drawn anew, as a pan does.
        surface.copyPart(expected, QRect(0, 0, expected.width(), std::max(0, dy)));
        surface.copyPart(expected, QRect(expected.width() + std::min(0, dx), 0, -std::min(0, dx), expected.height()));
        surface.copyPart(expected, QRect(0, 0, std::max(0, dx), expected.height()));
        surface.copyPart(expected, QRect(0, expected.height() + std::min(0, dy), expected.width(), -std::min(0, dy)));
    }
    EXPECT_EQ(surface.image().size(), copyBefore.size());
    // Drawing goes on in the image that scrolled, and a resize keeps what it shows.
    surface.setPenWidth(1);
    surface.setPenColor(kBlue);
    surface.line(0, 5 * kPx, 50 * kPx, 5 * kPx);
    EXPECT_EQ(surface.image().pixel(10, int(5 * ratio)), pixel(kBlue));
    const QRgb corner = surface.image().pixel(3, 3);
    surface.resize(60 * kPx, 30 * kPx);
    EXPECT_EQ(surface.image().pixel(3, 3), corner);
}

} // namespace
