#include "editor/mapevents.h"
#include "editor/mapsaving.h"
#include "editor/viewcommands.h"
#include "tools/crosshairtool.h"
#include "tools/tooldispatch.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/records.h"
#include "view/zoom.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace plotwell;
using namespace plotwell::test;

namespace {

using Op = RecordingSurface::Op;

// An editor whose tools draw in (10, 20, 30) at height 5 on layer 2; at
// scale 1 with no offset, surface twips are world units.
struct DrawWorld : FakeWorld {
    explicit DrawWorld(ToolId tool)
    {
        editor.doc.activeLayer = 2;
        editor.view.currentZ = 5;
        editor.palette.activeColor = {10, 20, 30};
        toolIconClicked(editor, tool);
    }
    void press(float x, float y, int button = kLeftButton) { mapMouseDown(editor, button, {x, y}); }
    void move(float x, float y, int buttons = 0) { mapMouseMove(editor, buttons, {x, y}); }
    void release() { mapMouseUp(editor); }
    void key(int code, int shift = 0) { mapKeyDown(editor, code, shift); }

    // What "Save all layers" writes for layer 2.
    std::string saved()
    {
        QTemporaryDir dir;
        editor.doc.homes[2].layerFile = dir.filePath(QStringLiteral("drawn.txt"));
        saveAllLayers(editor);
        return fileBytes(editor.doc.homes[2].layerFile).toStdString();
    }
};

// The rubber band follows the pointer from the chain's last point; Escape
// ends the chain and the band with it.
TEST(LineTool, ClicksMakeAChainThatEscapeCloses)
{
    DrawWorld w(ToolId::Line);
    w.press(0, 0);
    EXPECT_EQ(w.editor.doc.lineCount(), 0u) << "the first click only starts the chain";
    int frames = w.surface.frames();
    w.press(100, 0);
    EXPECT_EQ(w.surface.frames(), frames + 1) << "each line drawn is shown";
    w.surface.calls.clear();
    w.move(70, 80);
    EXPECT_TRUE(w.editor.tools.state.holdDrawing);
    const auto band = w.surface.only(Op::Line);
    ASSERT_EQ(band.size(), 1u);
    EXPECT_TRUE(band[0].a == 100 && band[0].b == 0 && band[0].c == 70 && band[0].d == 80);
    EXPECT_EQ(w.surface.calls.back().op, Op::Refresh) << "the band is shown";
    w.press(100, 50.5f);
    w.key(Key::Escape);
    w.surface.calls.clear();
    w.move(90, 90);
    EXPECT_FALSE(w.editor.tools.state.holdDrawing);
    EXPECT_TRUE(w.surface.only(Op::Line).empty());
    frames = w.surface.frames();
    w.press(300, 300); // starts a new chain
    EXPECT_EQ(w.surface.frames(), frames);
    EXPECT_EQ(w.saved(), "L 0,0,5,100,0,5,10,20,30\r\nL 100,0,5,100,50.5,5,10,20,30\r\n");
}

TEST(LineTool, DrawnCoordinatesAreRoundedToSevenDigits)
{
    DrawWorld w(ToolId::Line);
    w.editor.view.currentScale = 3;
    w.editor.view.offsetX = 0.5f;
    w.press(1000, 2000);
    w.press(4000.25f, -7);
    const MapLine& line = w.editor.doc.lines().at(0);
    EXPECT_EQ(line.p1.x, 333.1667f); // (1000 - 0.5) / 3
    EXPECT_EQ(line.p2.y, -2.333333f);
    EXPECT_EQ(line.p2.sy, line.p2.y * 3) << "scaled at once";
    EXPECT_EQ(line.layer, 2);
}

TEST(FreehandTool, PointsAtLeastThirtyWorldUnitsApart)
{
    for (const float scale : {1.0f, 2.0f}) {
        DrawWorld w(ToolId::Freehand);
        w.editor.view.currentScale = scale;
        w.press(0, 0);
        // Steps of 10 world units to the right along y = 50; a point with x
        // at 0 counts as none yet.
        for (int i = 0; i <= 10; ++i)
            w.move(float(i) * 10 * scale, 50 * scale, kLeftButton);
        w.release();
        w.move(500 * scale, 50 * scale, kLeftButton); // a new stroke starts unjoined
        w.move(600 * scale, 50 * scale, kLeftButton);
        EXPECT_EQ(w.saved(),
                  "L 10,50,5,40,50,5,10,20,30\r\n"
                  "L 40,50,5,70,50,5,10,20,30\r\n"
                  "L 70,50,5,100,50,5,10,20,30\r\n"
                  "L 500,50,5,600,50,5,10,20,30\r\n")
            << "scale " << scale;
    }
}

TEST(LabelTool, EnterMakesALabelWhereTheBoxOpened)
{
    const struct {
        const char* typed; // UTF-8
        const char* record; // nullptr: no label
    } cases[] = {
        {"North Gate", "P 40,60,5,10,20,30,1,North_Gate\r\n"},
        {"(New Label)", nullptr},
        {"(NEW LABEL)", nullptr},
        {"", nullptr},
        {"   ", "P 40,60,5,10,20,30,1,\r\n"},
        {"  Old  Bank ", "P 40,60,5,10,20,30,1,Old__Bank\r\n"},
        {"Gate,North", "P 40,60,5,10,20,30,1,Gate\r\n"},
        // A single-line box keeps what comes before a pasted line break.
        {"Guard Tower\nLevel 2", "P 40,60,5,10,20,30,1,Guard_Tower\r\n"},
        {"Bank \r\n", "P 40,60,5,10,20,30,1,Bank\r\n"},
        {"\rBank", nullptr},
        {"Stra\xc3\x9f"
         "e \xe2\x98\x83",
         "P 40,60,5,10,20,30,1,Stra\xdf"
         "e_?\r\n"},
    };
    for (const auto& c : cases) {
        DrawWorld w(ToolId::Label);
        w.press(40, 60);
        const CaptionBox& box = w.editor.tools.label().captionBox();
        EXPECT_TRUE(box.visible && box.left == 40 && box.top == 60);
        w.move(500, 500); // the box stays where it was opened
        captionEntered(w.editor, QString::fromUtf8(c.typed));
        EXPECT_FALSE(box.visible);
        EXPECT_EQ(w.saved(), c.record ? c.record : "") << c.typed;
    }
}

TEST(Deletion, TheSelectionOrElseTheLastRecord)
{
    const struct {
        bool selectSome;
        int shift;
        const char* left; // lines | labels, by their x
        int presses = 1;
    } cases[] = {
        {true, 0, "2 4 | 1"},
        {true, kShiftMask, "2 4 | 1"},
        {false, 0, "1 2 3 | 1 2"},
        {false, kShiftMask, "1 2 3 4 | 1"},
        {false, kShiftMask, "1 2 3 4 |", 2}, // the one label left goes too
        {false, kShiftMask | kCtrlMask, "1 2 3 | 1 2"},
    };
    for (const auto& c : cases) {
        DrawWorld w(ToolId::Pointer);
        Editor& e = w.editor;
        for (int x = 1; x <= 4; ++x)
            addTestLine(e, float(x), 0, 0, 9, 9, 0, {}, std::int16_t(x % 4));
        addTestLabel(e, 1, 0, 0, {}, "One", 1);
        addTestLabel(e, 2, 0, 0, {}, "Two", 3);
        if (c.selectSome) {
            e.doc.setLineSelected(0, true);
            e.doc.setLineSelected(2, true);
            e.doc.setLabelSelected(1, true);
        }
        const int frames = w.surface.frames();
        for (int i = 0; i < c.presses; ++i)
            w.key(Key::Delete, c.shift);
        std::string left;
        for (const MapLine& l : e.doc.lines())
            left += std::to_string(int(l.p1.x)) + " ";
        left += "|";
        for (const MapLabel& t : e.doc.labels())
            left += " " + std::to_string(int(t.pos.x));
        EXPECT_EQ(left, c.left) << c.selectSome << " " << c.shift;
        EXPECT_GE(w.surface.frames(), frames + 1);
    }
}

TEST(ShiftToLoc, TheTypedLocationComesUnderTheMark)
{
    const struct {
        const char* answer;
        bool shifts;
        float x, y; // the typed location, world
    } cases[] = {
        {"-120.5, 340", true, -340, 120.5f},
        {"-120.5,340", true, -340, 120.5f},
        {"Loc: 300 , -12.5", true, 12.5f, 0}, // a word before the comma reads as 0
        {" - 1 2 , 3 4", true, -34, 12}, // blanks anywhere are ignored
        {"NaN, 5", true, -5, 0},
        {",5", true, -5, 0},
        {"340", false, 0, 0},
        {"", false, 0, 0},
        {"1e999, 5", false, 0, 0},
        {"5, -3.5e38", false, 0, 0},
        {"1e38, 1e38", false, 0, 0}, // the offsets could not hold it at this scale
    };
    for (const auto& c : cases) {
        DrawWorld w(ToolId::Crosshair);
        Editor& e = w.editor;
        e.view.currentScale = 4;
        e.view.offsetX = 100;
        e.view.offsetY = -60;
        w.move(900, 700);
        w.press(900, 700); // marks world (200, 190)
        const MapPoint mark = e.tools.crosshair().mark();
        ASSERT_TRUE(mark.x == 200 && mark.y == 190);
        if (c.answer[0])
            w.dialogs.answers.push_back(QString::fromLatin1(c.answer));
        w.press(10, 10, kRightButton);
        ASSERT_EQ(w.dialogs.prompts.size(), 1u);
        EXPECT_EQ(w.dialogs.prompts[0].text, QStringLiteral("Shift this point to what loc?"));
        EXPECT_TRUE(w.dialogs.prompts[0].defaultText.isEmpty());
        if (!c.shifts) {
            EXPECT_TRUE(e.view.offsetX == 100 && e.view.offsetY == -60) << c.answer;
            continue;
        }
        // The typed point now stands where the mark was shown.
        EXPECT_FLOAT_EQ(c.x * 4 + e.view.offsetX, 900) << c.answer;
        EXPECT_FLOAT_EQ(c.y * 4 + e.view.offsetY, 700) << c.answer;
        EXPECT_TRUE(e.tools.state.holdDrawing) << "the shift does not release the held frame";
    }
}

} // namespace
