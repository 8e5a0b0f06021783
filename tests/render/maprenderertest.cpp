#include "render/stereo.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kGreen{0, 255, 0};

TEST(MapRenderer, AnEmptyFrameClearsAndPresentsAndHoldDrawsNothing)
{
    // The select box is white only on a black background.
    const ColorRGB cases[][2] = {{kBlack, kWhite}, {{1, 1, 1}, kBlack}, {{0, 0, 1}, kBlack}, {kWhite, kBlack}};
    for (const auto& c : cases) {
        FakeWorld w;
        w.surface.setBackColor(c[0]);
        w.editor.drawLines();
        EXPECT_EQ(opsOf(w.surface), (std::vector<Op>{Op::Clear, Op::Refresh}));
        EXPECT_EQ(w.editor.selection.box.border, c[1]) << c[0].value();

        w.surface.calls.clear();
        addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
        w.surface.setBackColor(c[1]);
        w.editor.tools.state.holdDrawing = true;
        w.editor.drawLines();
        EXPECT_TRUE(w.surface.calls.empty());
        EXPECT_EQ(w.editor.selection.box.border, c[1]) << "hold leaves the border";
    }
}

TEST(MapRenderer, LinesThenLabelsEachInRecordOrderAtTheirSurfacePlace)
{
    FakeWorld w;
    addTestLabel(w.editor, 7, 8, 0, kBlue, "First");
    addTestLine(w.editor, 1, 2, 0, 3, 4, 0, kBlue);
    addTestLabel(w.editor, 9, 10, 0, kGreen, "Second");
    addTestLine(w.editor, 5, 6, 0, 7, 8, 0, kGreen);
    setCurrentScale(w.editor.view, w.editor.doc, 2); // rescales every point
    w.editor.view.offsetX = 100;
    w.editor.view.offsetY = -50;
    w.editor.drawLines();

    // Each line with a pen of width 2 in its colour, then a black pen.
    const std::vector<Op> line{Op::PenWidth, Op::PenColor, Op::Line, Op::PenColor};
    const std::vector<Op> label{Op::PenColor, Op::FillColor, Op::Circle, Op::TextPosition, Op::Font, Op::Print};
    std::vector<Op> frame{Op::Clear};
    for (const auto* part : {&line, &line, &label, &label})
        frame.insert(frame.end(), part->begin(), part->end());
    frame.push_back(Op::Refresh);
    EXPECT_EQ(opsOf(w.surface), frame);

    std::vector<float> lines, marks, places;
    for (const auto& c : w.surface.only(Op::Line))
        lines.insert(lines.end(), {c.a, c.b, c.c, c.d, float(c.penWidth)});
    for (const auto& c : w.surface.only(Op::Circle)) {
        marks.insert(marks.end(), {c.a, c.b, c.c});
        EXPECT_TRUE(c.colour == kBlack && c.fill == kBlack) << "a black disc";
    }
    for (const auto& c : w.surface.only(Op::TextPosition))
        places.insert(places.end(), {c.a, c.b});
    EXPECT_EQ(lines, (std::vector<float>{102, -46, 106, -42, 2, 110, -38, 114, -34, 2}));
    EXPECT_EQ(marks, (std::vector<float>{114, -34, 2, 118, -30, 2})); // the scale is the radius
    EXPECT_EQ(places, (std::vector<float>{114, -34, 118, -30}));
    const auto printed = w.surface.only(Op::Print);
    EXPECT_EQ(printed.at(0).text + " " + printed.at(1).text, "First Second");
    EXPECT_EQ(printed.at(1).colour, kGreen);
    EXPECT_EQ(w.surface.only(Op::Line).at(1).colour, kGreen);
}

TEST(MapRenderer, RecordColourFollowsSelectionFlashAndInversion)
{
    const struct {
        const char* name;
        ColorRGB own;
        bool selected, invertChecked, flashChecked;
        std::int16_t flashLevel;
        ColorRGB background, drawn;
    } cases[] = {
        {"white on white inverted", kWhite, false, true, true, 255, kWhite, kBlack},
        {"one unit off is not inverted", {255, 255, 254}, false, true, true, 255, kWhite, {255, 255, 254}},
        {"inversion unchecked", kWhite, false, false, true, 255, kWhite, kWhite},
        {"black on black inverted", kBlack, false, true, true, 255, kBlack, kWhite},
        {"grey on its own grey", {10, 20, 30}, false, true, true, 255, {10, 20, 30}, {245, 235, 225}},
        {"selected green flashes red", kGreen, true, true, true, 127, kWhite, {127, 0, 0}},
        {"selected without flashing is full red", kGreen, true, true, false, 127, kWhite, kRed},
        {"selected red is cyan", kRed, true, true, true, 63, kWhite, {0, 255, 255}},
        {"selected red without flashing is cyan", kRed, true, true, false, 63, kWhite, {0, 255, 255}},
        {"selected is never inverted", kWhite, true, true, true, 1, kWhite, {1, 0, 0}},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        w.surface.setBackColor(c.background);
        w.editor.display.invertChecked = c.invertChecked;
        w.editor.display.flashChecked = c.flashChecked;
        w.editor.display.flashLevel = c.flashLevel;
        w.editor.doc.setLineSelected(addTestLine(w.editor, 0, 0, 0, 10, 10, 0, c.own), c.selected);
        w.editor.doc.setLabelSelected(addTestLabel(w.editor, 0, 0, 0, c.own, "Here"), c.selected);
        w.editor.drawLines();
        EXPECT_EQ(w.surface.only(Op::Line).at(0).colour, c.drawn) << c.name;
        EXPECT_EQ(w.surface.only(Op::Print).at(0).colour, c.drawn) << c.name;
    }
}

// The texts of the labels drawn and the first x of the lines drawn.
std::string drawn(const RecordingSurface& surface)
{
    std::string s;
    for (const auto& c : surface.only(Op::Line))
        s += std::to_string(int(c.a)) + " ";
    for (const auto& c : surface.only(Op::Print))
        s += c.text + " ";
    return s;
}

TEST(MapRenderer, HiddenLayersTheShowBoxesAndNoSelectedChooseWhatIsDrawn)
{
    const struct {
        bool lines, labels, noSelected;
        const char* drawn;
    } cases[] = {{true, true, false, "0 2 L0 L2 "},
                 {false, true, false, "L0 L2 "},
                 {true, false, false, "0 2 "},
                 {false, false, false, ""},
                 // Leaves out selected lines, but not selected labels.
                 {true, true, true, "0 L0 L2 "}};
    for (const auto& c : cases) {
        FakeWorld w;
        w.editor.display.layerChecked = {true, false, true, false};
        w.editor.display.showLines = c.lines;
        w.editor.display.showLabels = c.labels;
        for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
            w.editor.doc.setLineSelected(addTestLine(w.editor, layer, 0, 0, 10, 10, 0, kBlue, layer), layer == 2);
            w.editor.doc.setLabelSelected(
                addTestLabel(w.editor, layer, 0, 0, kBlue, "L" + std::to_string(layer), layer), layer == 2);
        }
        w.editor.drawLines(c.noSelected);
        EXPECT_EQ(drawn(w.surface), c.drawn);
    }
}

TEST(MapRenderer, HeightFilterTestsTheFirstEndOnlyAndHidesOnlyAGreaterDifference)
{
    const struct {
        const char* name;
        float z1, z2, currentZ, range;
        bool filterOn, drawn;
    } cases[] = {
        {"exactly at the range", 110, 110, 10, 100, true, true},
        {"just beyond", 110.01f, 110, 10, 100, true, false},
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
        w.editor.drawLines();
        EXPECT_EQ(drawn(w.surface), c.drawn ? "0 Here " : "") << c.name;
    }
}

TEST(MapRenderer, TheFontFollowsTheScaleAndTheFrameLeavesTheStateOfItsLastDrawing)
{
    FakeWorld w;
    addTestLabel(w.editor, 0, 0, 0, kGreen, "One", 0, 0);
    addTestLabel(w.editor, 0, 0, 0, ColorRGB{9, 8, 7}, "Two", 0, 3);
    setCurrentScale(w.editor.view, w.editor.doc, 9.5f);
    w.editor.drawLines();
    EXPECT_EQ(w.surface.only(Op::Circle).back().penWidth, 1) << "before any line, markers keep the first width";
    EXPECT_TRUE(w.surface.calls.back().pen == (ColorRGB{9, 8, 7}) && w.surface.calls.back().fill == kBlack);

    addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlue);
    setCurrentScale(w.editor.view, w.editor.doc, 99.5f);
    w.editor.drawLines();
    const auto& last = w.surface.calls.back();
    EXPECT_TRUE(last.pen == (ColorRGB{9, 8, 7}) && last.penWidth == 2 && last.fill == kBlack) << "after labels";
    // Int(scale / 10) + 10 points whatever the size code, never bold.
    std::vector<float> fonts;
    for (const auto& c : w.surface.only(Op::Font))
        fonts.insert(fonts.end(), {c.a, c.b});
    EXPECT_EQ(fonts, (std::vector<float>{10, 0, 10, 0, 19, 0, 19, 0}));

    w.editor.display.showLabels = false;
    w.surface.setPenColor(kGreen);
    w.editor.drawLines();
    EXPECT_TRUE(w.surface.calls.back().pen == kBlack && w.surface.calls.back().penWidth == 2) << "after a line";
    // A later frame with nothing drawn changes nothing.
    w.editor.display.showLines = false;
    w.surface.setPenColor(kGreen);
    w.editor.drawLines();
    EXPECT_TRUE(w.surface.calls.back().pen == kGreen && w.surface.calls.back().penWidth == 2) << "after nothing";
}

TEST(Stereo, BrightnessFollowsHeightWithinItsBounds)
{
    const struct {
        float z;
        std::int16_t slider, result;
    } cases[] = {
        {0, 0, 128},     {-1000, 0, 50},    {1270, 0, 255}, {1e9f, 0, 255},
        {-1e9f, 10, 60}, {5, 0, 128},       {15, 0, 130}, // 128.5 to 128, 129.5 to 130: halves go to the even one
        {0, 255, 255},   {-1000, 255, 255}, {0, 100, 228}};
    for (const auto& c : cases) {
        DisplayOptions options;
        options.brightness = c.slider;
        EXPECT_EQ(stereoBrightness(options, c.z), c.result) << c.z << " " << c.slider;
    }
}

TEST(Stereo, RecordsAreDrawnRedThenCyanShiftedByTheirHeight)
{
    const struct {
        const char* name;
        ColorRGB own;
        bool selected;
        std::uint8_t lineLevel;
        ColorRGB text;
    } cases[] = {
        // As bright as the first end is high: 128 at height 0, 228 at 1000.
        {"plain", kGreen, false, 128, {}},
        // Selected lines pulse with the flash; selected text takes the selection colour.
        {"selected", kGreen, true, 191, {191, 0, 0}},
        {"selected red", kRed, true, 0, {0, 255, 255}},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        w.editor.display.stereoChecked = true;
        w.editor.display.flashLevel = 191;
        w.editor.doc.setLineSelected(addTestLine(w.editor, 10, 20, 0, 30, 40, 1000, c.own), c.selected);
        w.editor.doc.setLabelSelected(addTestLabel(w.editor, 10, 20, 1000, c.own, "Up_here"), c.selected);
        setCurrentScale(w.editor.view, w.editor.doc, 10);
        w.editor.drawLines();
        const auto lines = w.surface.only(Op::Line);
        const auto circles = w.surface.only(Op::Circle);
        const auto printed = w.surface.only(Op::Print);
        const auto places = w.surface.only(Op::TextPosition);
        ASSERT_TRUE(lines.size() == 2 && circles.size() == 2 && printed.size() == 2 && places.size() == 2);
        const ColorRGB red{228, 0, 0}, cyan{0, 228, 228}, level = {c.lineLevel, 0, 0};
        EXPECT_TRUE(lines[0].colour == level && lines[1].colour == (ColorRGB{0, c.lineLevel, c.lineLevel})) << c.name;
        EXPECT_TRUE(lines[0].penWidth == 2 && lines[1].penWidth == 2);
        EXPECT_TRUE(circles[0].colour == red && circles[0].fill == red && circles[1].colour == cyan
                    && circles[1].fill == cyan)
            << c.name;
        EXPECT_TRUE(printed[0].colour == (c.selected ? c.text : red)) << c.name;
        EXPECT_TRUE(printed[1].colour == (c.selected ? c.text : cyan)) << c.name;
        // The cyan copy moves by 30 - 0.004 * height * scale: 30 at height 0, -10 at 1000.
        EXPECT_EQ((std::vector<float>{lines[0].a, lines[0].b, lines[0].c, lines[0].d, lines[1].a, lines[1].b,
                                      lines[1].c, lines[1].d}),
                  (std::vector<float>{100, 200, 300, 400, 130, 200, 290, 400}));
        EXPECT_EQ(
            (std::vector<float>{circles[0].a, circles[0].b, circles[0].c, circles[1].a, places[1].a, places[1].b}),
            (std::vector<float>{100, 200, 10, 90, 90, 200}));
        EXPECT_TRUE(printed[1].text == "Up_here" && w.surface.only(Op::Font).at(1).a == 11);
        // The frame leaves the cyan copy's pen and fill.
        EXPECT_TRUE(w.surface.calls.back().pen == printed[1].colour && w.surface.calls.back().fill == cyan);
    }
}

} // namespace
