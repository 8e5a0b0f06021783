#include "render/stereo.h"

#include "render/maprenderer.h"
#include "tests/render/renderhelpers.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(Stereo, BrightnessFollowsHeightWithinItsBounds)
{
    const struct {
        float z;
        std::int16_t brightness;
        std::int16_t slider;
        std::int16_t result;
    } cases[] = {
        {0, 0, 0, 128},       {-1000, 0, 0, 50},    {1270, 0, 0, 255},   {5000, 0, 0, 255},
        {5, 0, 0, 128},       {15, 0, 0, 130},      // 128.5 to 128, 129.5 to 130: halves go to the even one
        {0, 0, 255, 255},     {-1000, 0, 255, 255}, {0, 0, 100, 228},    {-1e7f, 0, 0, 50},
        {1e9f, 0, 0, 255},    {-1e9f, 0, 10, 60},
    };
    for (const auto& c : cases) {
        DisplayOptions options;
        options.brightness = c.slider;
        EXPECT_EQ(stereoBrightness(options, c.z), c.result) << c.z << " " << c.slider;
    }
}

TEST(Stereo, ShiftHasAConstantAndAHeightPart)
{
    DisplayOptions options;
    EXPECT_EQ(stereoShift(options, 0, 1), 30);
    EXPECT_FLOAT_EQ(stereoShift(options, 1000, 1), 26);
    // The scale multiplies only the height part.
    EXPECT_FLOAT_EQ(stereoShift(options, 1000, 10), -10);
    EXPECT_EQ(stereoShift(options, 0, 10), 30);
    options.stereo = 0;
    options.stereoZ = 0;
    EXPECT_EQ(stereoShift(options, 1000, 5), 0);
}

struct StereoWorld : FakeWorld {
    StereoWorld() { editor.display.stereoChecked = true; }
};

TEST(Stereo, LineIsDrawnRedThenCyanShiftedByTheHeightOfEachEnd)
{
    StereoWorld w;
    addTestLine(w.editor, 100, 200, 0, 300, 400, 1000, ColorRGB{0, 255, 0});
    drawLines(w.editor);
    const auto lines = w.surface.only(Op::Line);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].colour, (ColorRGB{128, 0, 0}));
    EXPECT_EQ((std::vector<float>{lines[0].a, lines[0].b, lines[0].c, lines[0].d}),
              (std::vector<float>{100, 200, 300, 400}));
    EXPECT_EQ(lines[1].colour, (ColorRGB{0, 128, 128}));
    EXPECT_EQ(lines[1].a, 130);
    EXPECT_EQ(lines[1].b, 200);
    EXPECT_FLOAT_EQ(lines[1].c, 326);
    EXPECT_EQ(lines[1].d, 400);
    for (const auto& line : lines)
        EXPECT_EQ(line.penWidth, 2);
    EXPECT_EQ(w.surface.calls.back().pen, kBlack);
}

TEST(Stereo, WithoutSeparationTheCyanCopyLiesOnTheRed)
{
    StereoWorld w;
    w.editor.display.stereo = 0;
    w.editor.display.stereoZ = 0;
    addTestLine(w.editor, 100, 200, 50, 300, 400, 900, kWhite);
    drawLines(w.editor);
    const auto lines = w.surface.only(Op::Line);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1].a, lines[0].a);
    EXPECT_EQ(lines[1].c, lines[0].c);
}

TEST(Stereo, SelectedLinePulsesWithTheFlashInBothCopies)
{
    const struct {
        ColorRGB own;
        std::uint8_t b;
    } cases[] = {{{0, 255, 0}, 191}, {kWhite, 191}, {kRed, 0}};
    for (const auto& c : cases) {
        StereoWorld w;
        w.editor.display.flashLevel = 191;
        addTestLine(w.editor, 0, 0, 0, 10, 10, 0, c.own).selected = true;
        drawLines(w.editor);
        const auto lines = w.surface.only(Op::Line);
        ASSERT_EQ(lines.size(), 2u);
        EXPECT_EQ(lines[0].colour, (ColorRGB{c.b, 0, 0}));
        EXPECT_EQ(lines[1].colour, (ColorRGB{0, c.b, c.b}));
    }
}

TEST(Stereo, LabelIsDrawnTwiceWithEyeColouredMarkers)
{
    StereoWorld w;
    setCurrentScale(w.editor, 10);
    addTestLabel(w.editor, 10, 20, 1000, ColorRGB{0, 0, 255}, "Up_here");
    drawLines(w.editor);
    // Brightness 228 at height 1000; shift 30 - 0.004 * 1000 * 10 = -10.
    const ColorRGB red{228, 0, 0}, cyan{0, 228, 228};
    const auto circles = w.surface.only(Op::Circle);
    const auto printed = w.surface.only(Op::Print);
    const auto positions = w.surface.only(Op::TextPosition);
    const auto fonts = w.surface.only(Op::Font);
    ASSERT_EQ(circles.size(), 2u);
    ASSERT_EQ(printed.size(), 2u);
    EXPECT_EQ(circles[0].colour, red);
    EXPECT_EQ(circles[0].fill, red);
    EXPECT_EQ(circles[1].colour, cyan);
    EXPECT_EQ(circles[1].fill, cyan);
    EXPECT_EQ(circles[0].a, 100);
    EXPECT_FLOAT_EQ(circles[1].a, 90);
    EXPECT_EQ(circles[0].c, 10);
    EXPECT_EQ(printed[0].colour, red);
    EXPECT_EQ(printed[1].colour, cyan);
    EXPECT_EQ(printed[1].text, "Up_here");
    EXPECT_FLOAT_EQ(positions[1].a, 90);
    EXPECT_EQ(positions[1].b, 200);
    EXPECT_EQ(fonts[1].a, 11);
    // The frame leaves the cyan copy's pen and fill.
    EXPECT_EQ(w.surface.calls.back().pen, cyan);
    EXPECT_EQ(w.surface.calls.back().fill, cyan);
}

TEST(Stereo, SelectedLabelTextTakesTheSelectionColourAndMarkersTheEyeColours)
{
    StereoWorld w;
    w.editor.display.flashLevel = 63;
    addTestLabel(w.editor, 0, 0, 0, ColorRGB{0, 255, 0}, "Picked").selected = true;
    drawLines(w.editor);
    const auto printed = w.surface.only(Op::Print);
    const auto circles = w.surface.only(Op::Circle);
    ASSERT_EQ(printed.size(), 2u);
    EXPECT_EQ(printed[0].colour, (ColorRGB{63, 0, 0}));
    EXPECT_EQ(printed[1].colour, (ColorRGB{63, 0, 0}));
    EXPECT_EQ(circles[0].colour, (ColorRGB{128, 0, 0}));
    EXPECT_EQ(circles[1].colour, (ColorRGB{0, 128, 128}));
}

} // namespace
