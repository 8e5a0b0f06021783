#include "platform/qimagesurface.h"

#include "tests/platform/naivesurface.h"
#include "tests/support/busymap.h"
#include "tests/support/records.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kBlue{0, 0, 255};
constexpr ColorRGB kGreen{0, 160, 0};
constexpr float kPx = 15; // twips to a pixel

QRgb pixel(ColorRGB c) { return qRgb(c.r, c.g, c.b); }

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

TEST(QImageSurface, FramesAreThoseOfDrawingEveryOperationDirectly)
{
    const struct {
        const char* name;
        float scale;
        bool stereo, heightFilter;
        ColorRGB back;
    } cases[] = {
        {"plain", 2, false, false, kWhite},          {"zoomed in", 9.5f, false, false, kWhite},
        {"large labels", 60, false, false, kBlue},   {"height filter", 2, false, true, kWhite},
        {"stereo", 3, true, false, kBlack},         {"beyond the zoom strip", 150, false, false, kWhite},
    };
    for (const auto& c : cases) {
        QImageSurface surface(300 * kPx, 220 * kPx);
        NaiveSurface naive(300, 220);
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

} // namespace
