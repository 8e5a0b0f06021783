#include "platform/qimagesurface.h"

#include "render/maprenderer.h"
#include "tests/render/naivesurface.h"
#include "tests/render/renderhelpers.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kBlue{0, 0, 255};
constexpr ColorRGB kGreen{0, 160, 0};

QRgb pixel(ColorRGB c) { return qRgb(c.r, c.g, c.b); }

// An editor drawing on a given surface, with scripted fakes for the rest.
struct SurfaceWorld {
    explicit SurfaceWorld(DrawingSurface& surface)
        : editor(Services{surface, fileDialog, dialogs, settings, events, clipboard})
    {
        editor.map.width = surface.width();
        editor.map.height = surface.height();
    }
    ScriptedFileDialog fileDialog;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    CountingEventPump events;
    MemoryClipboard clipboard;
    Editor editor;
};

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

TEST(QImageSurface, ImageIsAt96DotsPerInchWithoutScaling)
{
    QImageSurface surface(3000, 1500);
    EXPECT_EQ(surface.image().size(), QSize(200, 100));
    EXPECT_EQ(surface.image().devicePixelRatio(), 1.0);
    EXPECT_EQ(surface.image().logicalDpiX(), 96);
    EXPECT_EQ(surface.image().logicalDpiY(), 96);
    EXPECT_EQ(surface.width(), 3000);
}

TEST(QImageSurface, LineAndLabelLandWhereTheyShouldInTheirColours)
{
    QImageSurface surface(200 * 15, 120 * 15);
    int presented = 0;
    surface.onRefresh = [&] { ++presented; };
    SurfaceWorld w(surface);
    setCurrentScale(w.editor, 100);
    // World units at scale 100 are 100 twips: a line at y = 60 px from x = 15 px to 165 px.
    addTestLine(w.editor, 0.15f * 15, 0.6f * 15, 0, 1.65f * 15, 0.6f * 15, 0, kBlue);
    // A label at (30 px, 15 px); its marker has a radius of 100 twips.
    addTestLabel(w.editor, 0.3f * 15, 0.15f * 15, 0, kGreen, "Hi");
    drawLines(w.editor);
    EXPECT_EQ(presented, 1);

    const QImage& image = surface.image();
    EXPECT_EQ(image.pixel(90, 60), pixel(kBlue));
    EXPECT_EQ(image.pixel(20, 60), pixel(kBlue));
    EXPECT_EQ(image.pixel(90, 56), pixel(kWhite));
    EXPECT_EQ(image.pixel(90, 64), pixel(kWhite));
    EXPECT_EQ(image.pixel(30, 15), pixel(kBlack)) << "marker centre";
    EXPECT_EQ(image.pixel(34, 15), pixel(kBlack)) << "inside the marker";
    EXPECT_EQ(image.pixel(30, 26), pixel(kWhite)) << "beyond the marker";

    // Antialiasing is off: every pixel is background, line, marker or text.
    EXPECT_EQ(coloursIn(image), (std::set<QRgb>{pixel(kWhite), pixel(kBlue), pixel(kBlack), pixel(kGreen)}));

    // The text's top-left corner is at the label: its ink lies right of and
    // below the label point, within a line of 20-point text.
    int top = image.height(), left = image.width(), bottom = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == pixel(kGreen)) {
                top = std::min(top, y);
                left = std::min(left, x);
                bottom = std::max(bottom, y);
            }
    EXPECT_GE(left, 30);
    EXPECT_LE(left, 34);
    EXPECT_GE(top, 15);
    EXPECT_LE(top, 15 + 12);
    EXPECT_LE(bottom, 15 + 27 + 2);
    EXPECT_GE(bottom - top, 12) << "20-point capitals are about 19 pixels high";
}

TEST(QImageSurface, LineReachingFarOutsideIsStillDrawnWhereItCrosses)
{
    QImageSurface surface(100 * 15, 100 * 15);
    surface.setPenWidth(2);
    surface.setPenColor(kBlue);
    surface.line(-3e7f, 50 * 15, 3e7f, 50 * 15);
    surface.line(50 * 15, -1e30f, 50 * 15, 1e30f);
    surface.line(0, 0, std::numeric_limits<float>::infinity(), 10);
    surface.line(std::numeric_limits<float>::quiet_NaN(), 0, 10, 10);
    surface.refresh();
    EXPECT_EQ(surface.image().pixel(5, 50), pixel(kBlue));
    EXPECT_EQ(surface.image().pixel(95, 50), pixel(kBlue));
    EXPECT_EQ(surface.image().pixel(50, 5), pixel(kBlue));
}

TEST(QImageSurface, CircleFootprintsMatchQPainter)
{
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> place(-20 * 15, 140 * 15), radius(0, 12 * 15);
    QImageSurface surface(120 * 15, 90 * 15);
    NaiveSurface naive(120, 90);
    DrawingSurface* both[] = {&surface, &naive};
    for (int i = 0; i < 600; ++i) {
        const float x = place(rng), y = place(rng), r = i % 50 == 0 ? 70 * 15 : radius(rng);
        const ColorRGB outline{std::uint8_t(i), 0, 200}, fill{0, std::uint8_t(i), 100};
        for (DrawingSurface* s : both) {
            s->setFillColor(fill);
            // The same circle again, and again with other pens: the repeats
            // come from remembered pixels, which must be those of their pen.
            for (const int width : {i % 3 + 1, i % 3 + 1, 3 - i % 3}) {
                s->setPenWidth(width);
                s->circle(x, y, r, outline);
            }
        }
        if (i % 100 == 99) {
            ASSERT_EQ(differingPixels(surface.image(), naive.image()), 0) << "after circle " << i;
            for (DrawingSurface* s : both)
                s->clear();
        }
    }
}

// A busy map: many colours in runs, records off the surface and across its
// edges, selected records, every layer.
void fillBusyMap(Editor& editor, std::uint32_t seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> coord(-40, 160), step(-8, 8), height(-300, 300);
    const ColorRGB palette[] = {kBlue, kGreen, kWhite, kRed, {200, 200, 0}, {90, 90, 90}};
    editor.layers.checked = {true, true, false, true};
    float x = 0, y = 0;
    for (int i = 0; i < 4000; ++i) {
        if (i % 25 == 0)
            x = coord(rng), y = coord(rng);
        const float x2 = x + step(rng), y2 = y + step(rng);
        const ColorRGB colour = palette[(i / 3 + rng() % 2) % 6];
        addTestLine(editor, x, y, height(rng), x2, y2, height(rng), colour, std::int16_t(rng() % 4)).selected =
            rng() % 20 == 0;
        x = x2, y = y2;
    }
    addTestLine(editor, -1000, 50, 0, 1000, 60, 0, kBlue);
    for (int i = 0; i < 150; ++i)
        addTestLabel(editor, coord(rng), coord(rng), height(rng), palette[rng() % 6], "Place_" + std::to_string(i),
                     std::int16_t(rng() % 4))
            .selected = rng() % 10 == 0;
}

TEST(QImageSurface, FramesAreThoseOfDrawingEveryOperationDirectly)
{
    const struct {
        const char* name;
        float scale;
        bool stereo;
        bool heightFilter;
        ColorRGB back;
    } cases[] = {
        {"plain", 2, false, false, kWhite},
        {"zoomed in", 9.5f, false, false, kWhite},
        {"large labels", 60, false, false, kBlue},
        {"height filter", 2, false, true, kWhite},
        {"stereo", 3, true, false, kBlack},
    };
    for (const auto& c : cases) {
        QImageSurface surface(300 * 15, 220 * 15);
        NaiveSurface naive(300, 220);
        SurfaceWorld real(surface), plain(naive);
        for (SurfaceWorld* w : {&real, &plain}) {
            Editor& e = w->editor;
            e.services.surface.setBackColor(c.back);
            fillBusyMap(e, 11);
            setCurrentScale(e, c.scale);
            e.view.offsetX = 300;
            e.view.offsetY = 250;
            e.view.currentZ = 40;
            e.display.stereoChecked = c.stereo;
            e.display.heightFilterOn = c.heightFilter;
            e.display.flashLevel = 127;
            drawLines(e);
        }
        EXPECT_EQ(differingPixels(surface.image(), naive.image()), 0) << c.name;
        EXPECT_GT(coloursIn(surface.image()).size(), 4u) << c.name << " drew something";
    }
}

TEST(QImageSurface, DrawingBetweenFramesShowsWithoutARefresh)
{
    QImageSurface surface(100 * 15, 100 * 15);
    surface.setPenWidth(2);
    surface.setPenColor(kRed);
    surface.line(10 * 15, 10 * 15, 90 * 15, 10 * 15);
    EXPECT_EQ(surface.image().pixel(50, 10), pixel(kRed));
}

TEST(QImageSurface, ClearFillsWithTheBackgroundAndDropsPendingLines)
{
    QImageSurface surface(50 * 15, 50 * 15);
    surface.setPenColor(kRed);
    surface.line(0, 25 * 15, 50 * 15, 25 * 15);
    surface.setBackColor(kGreen);
    surface.clear();
    EXPECT_EQ(coloursIn(surface.image()), (std::set<QRgb>{pixel(kGreen)}));
}

TEST(QImageSurface, ResizeKeepsTheDrawingAtTheTopLeft)
{
    QImageSurface surface(40 * 15, 40 * 15);
    surface.setPenColor(kBlue);
    surface.setPenWidth(2);
    surface.line(0, 20 * 15, 40 * 15, 20 * 15);
    surface.resize(80 * 15, 30 * 15);
    EXPECT_EQ(surface.image().size(), QSize(80, 30));
    EXPECT_EQ(surface.width(), 80 * 15);
    EXPECT_EQ(surface.image().pixel(20, 20), pixel(kBlue));
    EXPECT_EQ(surface.image().pixel(60, 20), pixel(kWhite));
}

TEST(QImageSurface, PicturesAreCopiedOrCombinedWithOr)
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(qRgb(0x0f, 0x30, 0x00));
    QImageSurface surface(20 * 15, 20 * 15);
    surface.setBackColor(ColorRGB{0xf0, 0x01, 0x00});
    surface.clear();
    // Copied and stretched to twice its size at (2, 2) px.
    surface.paintPicture(picture, QRectF(2 * 15, 2 * 15, 8 * 15, 8 * 15), QRectF(0, 0, 4 * 15, 4 * 15),
                         RasterOp::Copy);
    surface.paintPicture(picture, QRectF(12 * 15, 12 * 15, 4 * 15, 4 * 15), QRectF(0, 0, 4 * 15, 4 * 15),
                         RasterOp::Or);
    const QImage& image = surface.image();
    EXPECT_EQ(image.pixel(2, 2), qRgb(0x0f, 0x30, 0x00));
    EXPECT_EQ(image.pixel(9, 9), qRgb(0x0f, 0x30, 0x00));
    EXPECT_EQ(image.pixel(10, 10), qRgb(0xf0, 0x01, 0x00));
    EXPECT_EQ(image.pixel(13, 13), qRgb(0xff, 0x31, 0x00));
}

} // namespace
