#include "render/maprenderer.h"

#include "tests/render/renderhelpers.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kGreen{0, 255, 0};
constexpr ColorRGB kBlue{0, 0, 255};

TEST(MapRenderer, EmptyDocumentClearsAndPresents)
{
    FakeWorld w;
    drawLines(w.editor);
    EXPECT_EQ(opsOf(w.surface), (std::vector<Op>{Op::Clear, Op::Refresh}));
}

TEST(MapRenderer, HoldDrawsNothingAndLeavesTheSelectBoxColour)
{
    FakeWorld w;
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
    w.surface.setBackColor(kBlack);
    w.editor.map.selectBox.border = ColorRGB{1, 2, 3};
    w.editor.tools.holdDrawing = true;
    drawLines(w.editor);
    EXPECT_TRUE(w.surface.calls.empty());
    EXPECT_EQ(w.editor.map.selectBox.border, (ColorRGB{1, 2, 3}));
}

TEST(MapRenderer, SelectBoxIsWhiteOnlyOnABlackBackground)
{
    const struct {
        ColorRGB back;
        ColorRGB border;
    } cases[] = {{kBlack, kWhite}, {{1, 1, 1}, kBlack}, {{0, 0, 1}, kBlack}, {kWhite, kBlack}, {{40, 90, 200}, kBlack}};
    for (const auto& c : cases) {
        FakeWorld w;
        w.surface.setBackColor(c.back);
        drawLines(w.editor);
        EXPECT_EQ(w.editor.map.selectBox.border, c.border) << c.back.value();
    }
}

TEST(MapRenderer, LinesThenLabelsEachInRecordOrderAtTheirSurfacePlace)
{
    FakeWorld w;
    setCurrentScale(w.editor, 2);
    w.editor.view.offsetX = 100;
    w.editor.view.offsetY = -50;
    addTestLabel(w.editor, 7, 8, 0, kBlue, "First");
    addTestLine(w.editor, 1, 2, 0, 3, 4, 0, kBlue);
    addTestLabel(w.editor, 9, 10, 0, kBlue, "Second");
    addTestLine(w.editor, 5, 6, 0, 7, 8, 0, kGreen);
    drawLines(w.editor);

    const auto ops = opsOf(w.surface);
    const auto lastLine = std::find(ops.rbegin(), ops.rend(), Op::Line);
    const auto firstCircle = std::find(ops.begin(), ops.end(), Op::Circle);
    ASSERT_NE(firstCircle, ops.end());
    EXPECT_LT(std::distance(ops.begin(), lastLine.base()), std::distance(ops.begin(), firstCircle));
    EXPECT_EQ(ops.front(), Op::Clear);
    EXPECT_EQ(ops.back(), Op::Refresh);

    const auto lines = w.surface.only(Op::Line);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ((std::vector<float>{lines[0].a, lines[0].b, lines[0].c, lines[0].d}),
              (std::vector<float>{102, -46, 106, -42}));
    EXPECT_EQ((std::vector<float>{lines[1].a, lines[1].b, lines[1].c, lines[1].d}),
              (std::vector<float>{110, -38, 114, -34}));
    const auto printed = w.surface.only(Op::Print);
    ASSERT_EQ(printed.size(), 2u);
    EXPECT_EQ(printed[0].text, "First");
    EXPECT_EQ(printed[1].text, "Second");
    const auto positions = w.surface.only(Op::TextPosition);
    EXPECT_EQ(positions[1].a, 118);
    EXPECT_EQ(positions[1].b, -30);
}

TEST(MapRenderer, EveryLineWithPenWidthTwoAndThenABlackPen)
{
    FakeWorld w;
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
    addTestLine(w.editor, 0, 0, 0, 20, 10, 0, kGreen);
    drawLines(w.editor);
    const std::vector<Op> expected{Op::Clear, Op::PenWidth, Op::PenColor, Op::Line, Op::PenColor,
                                   Op::PenWidth, Op::PenColor, Op::Line, Op::PenColor, Op::Refresh};
    EXPECT_EQ(opsOf(w.surface), expected);
    for (const auto& line : w.surface.only(Op::Line))
        EXPECT_EQ(line.penWidth, 2);
    EXPECT_EQ(w.surface.only(Op::Line)[1].colour, kGreen);
    EXPECT_EQ(w.surface.calls.back().pen, kBlack);
}

// The colour a record is drawn in, for lines and labels alike.
struct ColourCase {
    const char* name;
    ColorRGB own;
    bool selected;
    bool invertChecked;
    bool flashChecked;
    std::int16_t flashLevel;
    ColorRGB background;
    ColorRGB drawn;
};

const ColourCase kColourCases[] = {
    {"white on white inverted", kWhite, false, true, true, 255, kWhite, kBlack},
    {"one unit off is not inverted", {255, 255, 254}, false, true, true, 255, kWhite, {255, 255, 254}},
    {"inversion unchecked", kWhite, false, false, true, 255, kWhite, kWhite},
    {"black on black inverted", kBlack, false, true, true, 255, kBlack, kWhite},
    {"white on black unchanged", kWhite, false, true, true, 255, kBlack, kWhite},
    {"grey on its own grey", {10, 20, 30}, false, true, true, 255, {10, 20, 30}, {245, 235, 225}},
    {"selected green flashes red", kGreen, true, true, true, 127, kWhite, {127, 0, 0}},
    {"selected without flashing is full red", kGreen, true, true, false, 127, kWhite, kRed},
    {"selected red is cyan", kRed, true, true, true, 63, kWhite, {0, 255, 255}},
    {"selected red without flashing is cyan", kRed, true, true, false, 63, kWhite, {0, 255, 255}},
    {"selected is never inverted", kWhite, true, true, true, 1, kWhite, {1, 0, 0}},
};

class RecordColour : public ::testing::TestWithParam<ColourCase> {
protected:
    void SetUp() override
    {
        const ColourCase& c = GetParam();
        w.surface.setBackColor(c.background);
        w.editor.display.invertChecked = c.invertChecked;
        w.editor.display.flashChecked = c.flashChecked;
        w.editor.display.flashLevel = c.flashLevel;
    }
    FakeWorld w;
};

TEST_P(RecordColour, Line)
{
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, GetParam().own).selected = GetParam().selected;
    drawLines(w.editor);
    const auto lines = w.surface.only(Op::Line);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].colour, GetParam().drawn);
}

TEST_P(RecordColour, Label)
{
    addTestLabel(w.editor, 0, 0, 0, GetParam().own, "Here").selected = GetParam().selected;
    drawLines(w.editor);
    const auto printed = w.surface.only(Op::Print);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].colour, GetParam().drawn);
}

INSTANTIATE_TEST_SUITE_P(Rules, RecordColour, ::testing::ValuesIn(kColourCases),
                         [](const auto& info) {
                             std::string name = info.param.name;
                             for (char& ch : name)
                                 if (!std::isalnum(static_cast<unsigned char>(ch)))
                                     ch = '_';
                             return name;
                         });

TEST(MapRenderer, HiddenLayersDrawNothing)
{
    FakeWorld w;
    w.editor.layers.checked = {true, false, true, false};
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        addTestLine(w.editor, layer, 0, 0, 10, 10, 0, kBlue, layer);
        addTestLabel(w.editor, layer, 0, 0, kBlue, "L" + std::to_string(layer), layer);
    }
    drawLines(w.editor);
    std::vector<float> lineStarts;
    for (const auto& line : w.surface.only(Op::Line))
        lineStarts.push_back(line.a);
    EXPECT_EQ(lineStarts, (std::vector<float>{0, 2}));
    std::vector<std::string> texts;
    for (const auto& print : w.surface.only(Op::Print))
        texts.push_back(print.text);
    EXPECT_EQ(texts, (std::vector<std::string>{"L0", "L2"}));
}

TEST(MapRenderer, HeightFilterTestsTheFirstEndOnlyAndHidesOnlyAGreaterDifference)
{
    const struct {
        const char* name;
        float z1, z2, currentZ, range;
        bool filterOn;
        bool drawn;
    } cases[] = {
        {"exactly at the range", 110, 110, 10, 100, true, true},
        {"just beyond", 110.01f, 110, 10, 100, true, false},
        {"below by exactly the range", -90, 0, 10, 100, true, true},
        {"below beyond", -90.5f, 10, 10, 100, true, false},
        {"second end far away", 10, 5000, 10, 100, true, true},
        {"first end away, second at z", 5000, 10, 10, 100, true, false},
        {"filter off", 5000, 5000, 10, 100, false, true},
        // 100000003 as a single is 100000000, which equals the range.
        {"difference rounded to single", 1e8f, 0, -3, 1e8f, true, true},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        w.editor.display.heightFilterOn = c.filterOn;
        w.editor.display.heightRange = c.range;
        w.editor.view.currentZ = c.currentZ;
        addTestLine(w.editor, 0, 0, c.z1, 10, 10, c.z2, kBlue);
        addTestLabel(w.editor, 0, 0, c.z1, kBlue, "Here");
        drawLines(w.editor);
        EXPECT_EQ(w.surface.only(Op::Line).size(), c.drawn ? 1u : 0u) << c.name;
        EXPECT_EQ(w.surface.only(Op::Print).size(), c.drawn ? 1u : 0u) << c.name;
    }
}

TEST(MapRenderer, NoSelectedLeavesOutSelectedLinesButNotSelectedLabels)
{
    FakeWorld w;
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue).selected = true;
    addTestLine(w.editor, 1, 0, 0, 10, 10, 0, kBlue);
    addTestLabel(w.editor, 0, 0, 0, kBlue, "Picked").selected = true;
    w.editor.display.flashLevel = 191;
    drawLines(w.editor, true);
    const auto lines = w.surface.only(Op::Line);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].a, 1);
    const auto printed = w.surface.only(Op::Print);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].colour, (ColorRGB{191, 0, 0}));
}

TEST(MapRenderer, ShowLinesAndShowLabelsChooseWhatIsDrawn)
{
    for (const bool lines : {false, true}) {
        for (const bool labels : {false, true}) {
            FakeWorld w;
            w.editor.display.showLines = lines;
            w.editor.display.showLabels = labels;
            addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue, 0);
            addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue, 2);
            w.editor.layers.checked[2] = true;
            addTestLabel(w.editor, 0, 0, 0, kBlue, "Here");
            drawLines(w.editor);
            EXPECT_EQ(w.surface.only(Op::Line).size(), lines ? 2u : 0u);
            EXPECT_EQ(w.surface.only(Op::Print).size(), labels ? 1u : 0u);
        }
    }
}

TEST(MapRenderer, LabelMarkerIsABlackDiscOfTheScaleAsRadius)
{
    FakeWorld w;
    setCurrentScale(w.editor, 25);
    addTestLabel(w.editor, 4, 6, 0, kGreen, "Here");
    drawLines(w.editor);
    const auto circles = w.surface.only(Op::Circle);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].a, 100);
    EXPECT_EQ(circles[0].b, 150);
    EXPECT_EQ(circles[0].c, 25);
    EXPECT_EQ(circles[0].colour, kBlack);
    EXPECT_EQ(circles[0].fill, kBlack);
    EXPECT_EQ(circles[0].pen, kGreen);
    // No line was drawn: the marker keeps the width the surface had.
    EXPECT_EQ(circles[0].penWidth, 1);
}

TEST(MapRenderer, FontSizeFollowsTheScaleOnlyAndIsNeverBold)
{
    const struct {
        float scale;
        float points;
    } cases[] = {{0.5f, 10}, {9.5f, 10}, {10, 11}, {25, 12}, {99.5f, 19}, {100, 20}};
    for (const auto& c : cases) {
        FakeWorld w;
        setCurrentScale(w.editor, c.scale);
        addTestLabel(w.editor, 0, 0, 0, kBlue, "Small", 0, 0);
        addTestLabel(w.editor, 1, 0, 0, kBlue, "Large", 0, 3);
        drawLines(w.editor);
        const auto fonts = w.surface.only(Op::Font);
        ASSERT_EQ(fonts.size(), 2u);
        for (const auto& font : fonts) {
            EXPECT_EQ(font.a, c.points) << c.scale;
            EXPECT_EQ(font.b, 0) << "bold at scale " << c.scale;
        }
    }
}

TEST(MapRenderer, LabelTextIsPrintedAsStoredWithUnderscores)
{
    FakeWorld w;
    addTestLabel(w.editor, 0, 0, 0, kBlue, "  Gate to the  North_Karana ");
    drawLines(w.editor);
    const auto printed = w.surface.only(Op::Print);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].text, "Gate_to_the__North_Karana");
}

TEST(MapRenderer, TheFrameLeavesTheLastLabelsPenFillAndFont)
{
    FakeWorld w;
    setCurrentScale(w.editor, 30);
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
    addTestLabel(w.editor, 0, 0, 0, kGreen, "One");
    addTestLabel(w.editor, 0, 0, 0, ColorRGB{9, 8, 7}, "Two");
    drawLines(w.editor);
    const auto& last = w.surface.calls.back();
    EXPECT_EQ(last.pen, (ColorRGB{9, 8, 7}));
    EXPECT_EQ(last.penWidth, 2);
    EXPECT_EQ(last.fill, kBlack);
    const auto fonts = w.surface.only(Op::Font);
    EXPECT_EQ(fonts.back().a, 13);
}

TEST(MapRenderer, WithoutLabelsTheFrameLeavesABlackPenOfWidthTwo)
{
    FakeWorld w;
    w.surface.setPenColor(kGreen);
    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
    drawLines(w.editor);
    EXPECT_EQ(w.surface.calls.back().pen, kBlack);
    EXPECT_EQ(w.surface.calls.back().penWidth, 2);

    // A later frame with nothing drawn changes neither.
    w.editor.display.showLines = false;
    w.surface.setPenColor(kGreen);
    drawLines(w.editor);
    EXPECT_EQ(w.surface.calls.back().pen, kGreen);
    EXPECT_EQ(w.surface.calls.back().penWidth, 2);
}

} // namespace
