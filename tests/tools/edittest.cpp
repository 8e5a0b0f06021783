#include "editor/editmenu.h"
#include "editor/edits.h"
#include "editor/mapevents.h"
#include "editor/mapsaving.h"
#include "editor/startup.h"
#include "tools/editselection.h"
#include "tools/snapping.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/records.h"
#include "view/viewkeys.h"
#include "view/zoom.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// Scale 2 and offset (100, 50): a surface point (X, Y) is world ((X - 100) / 2, (Y - 50) / 2).
struct EditWorld : FakeWorld {
    EditWorld()
    {
        editor.view.currentScale = 2;
        editor.view.offsetX = 100;
        editor.view.offsetY = 50;
    }
    SurfacePoint at(float x, float y) const { return {x * 2 + 100, y * 2 + 50}; }
    void press(float x, float y, int button = kLeftButton) { mapMouseDown(editor, button, at(x, y)); }
    void move(float x, float y, int buttons = kLeftButton) { mapMouseMove(editor, buttons, at(x, y)); }
    void release() { mapMouseUp(editor); }
    void drag(float x0, float y0, float x1, float y1)
    {
        press(x0, y0);
        move(x1, y1);
        release();
    }
    // What "Save all layers" writes for the base layer.
    std::string saved()
    {
        QTemporaryDir dir;
        editor.doc.homes[0].layerFile = dir.filePath(QStringLiteral("edited.txt"));
        saveAllLayers(editor);
        return fileBytes(editor.doc.homes[0].layerFile).toStdString();
    }
};

void expectPoint(const MapPoint& p, float x, float y, float z, float scale)
{
    EXPECT_EQ(p.x, x);
    EXPECT_EQ(p.y, y);
    EXPECT_EQ(p.z, z);
    EXPECT_EQ(p.sx, x * scale) << "the scaled coordinates move with the world ones";
    EXPECT_EQ(p.sy, y * scale);
}

} // namespace

// A drag moves the selected lines (both ends) and labels by the world
// distance, shown while the button is held, as one step that undoes exactly.
TEST(MoveTool, DragMovesTheSelectionAsOneStep)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLine(e, 0, 0, 1, 10, 0, 2, {1, 2, 3}, 1);
    addTestLine(e, 50, 50, 0, 60, 60, 0, {4, 5, 6});
    addTestLabel(e, 5, 5, 7, {7, 8, 9}, "Gate", 2);
    e.doc.setLineSelected(0, true);
    e.doc.setLabelSelected(0, true);
    toolIconClicked(e, ToolId::Move);
    EXPECT_EQ(e.tools.state.mapCursor, MapCursor::Move);

    w.press(1, 1);
    w.move(4, -3);
    EXPECT_TRUE(e.tools.state.marks.dragging) << "drawn live while dragging";
    EXPECT_EQ(e.tools.state.marks.dx, 3);
    EXPECT_EQ(e.tools.state.marks.dy, -4);
    EXPECT_EQ(e.doc.lines()[0].p1.x, 0) << "nothing changes until the release";
    w.surface.calls.clear();
    e.display.layerChecked[1] = true;
    e.drawLines();
    const auto lines = w.surface.only(Op::Line);
    ASSERT_FALSE(lines.empty());
    const auto& dragged = lines.back(); // over everything: the line where the drag puts it
    EXPECT_EQ(std::vector<float>({dragged.a, dragged.b, dragged.c, dragged.d}),
              std::vector<float>({w.at(3, -4).x, w.at(3, -4).y, w.at(13, -4).x, w.at(13, -4).y}));
    w.release();
    EXPECT_FALSE(e.tools.state.marks.dragging);

    const MapLine& line = e.doc.lines()[0];
    expectPoint(line.p1, 3, -4, 1, 2);
    expectPoint(line.p2, 13, -4, 2, 2);
    EXPECT_EQ(line.layer, 1);
    EXPECT_TRUE(line.selected);
    EXPECT_EQ(line.r, 1);
    expectPoint(e.doc.lines()[1].p1, 50, 50, 0, 2);
    const MapLabel& label = e.doc.labels()[0];
    expectPoint(label.pos, 8, 1, 7, 2);
    EXPECT_EQ(label.text, "Gate");
    EXPECT_EQ(label.layer, 2);
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Move"));
    EXPECT_EQ(e.history.stepCount(), 1u);

    undoEdit(e);
    expectPoint(e.doc.lines()[0].p1, 0, 0, 1, 2);
    expectPoint(e.doc.labels()[0].pos, 5, 5, 7, 2);
    redoEdit(e);
    expectPoint(e.doc.lines()[0].p2, 13, -4, 2, 2);
}

// Shift keeps to the larger direction; a press that moves nothing, a right
// drag and a drag with nothing selected change nothing.
TEST(MoveTool, ShiftKeepsToOneAxisAndOtherDragsMoveNothing)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLine(e, 0, 0, 0, 10, 0, 0, kBlack);
    toolIconClicked(e, ToolId::Move);
    w.drag(0, 0, 5, 5);
    EXPECT_EQ(e.history.stepCount(), 0u) << "nothing selected, nothing moves";

    e.doc.setLineSelected(0, true);
    w.press(0, 0);
    w.release();
    EXPECT_EQ(e.history.stepCount(), 0u) << "a press alone";

    const float offsetX = e.view.offsetX;
    w.press(0, 0, kRightButton);
    w.move(5, 5, kRightButton);
    w.release();
    EXPECT_NE(e.view.offsetX, offsetX) << "the right button pans";
    EXPECT_EQ(e.doc.lines()[0].p1.x, 0);
    e.view.offsetX = 100;
    e.view.offsetY = 50;

    e.keys.theShiftKeyIsDown = true;
    w.drag(0, 0, 2, -7);
    expectPoint(e.doc.lines()[0].p1, 0, -7, 0, 2);
    w.drag(0, 0, 6, 5);
    expectPoint(e.doc.lines()[0].p1, 6, -7, 0, 2);
}

// Edit > Move Selection... reads the distance as a /loc writes a place: y and
// x negated, then z. Anything else changes nothing.
TEST(MoveSelection, TypedDistanceInTheGamesOrderAndSigns)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLine(e, 0, 0, 0, 10, 0, 0, kBlack);
    addTestLabel(e, 1, 2, 3, kBlack, "A");
    e.doc.setLineSelected(0, true);
    e.doc.setLabelSelected(0, true);

    w.dialogs.answers = {QStringLiteral(" 10 , -20.5, 5")};
    moveSelectionFromMenu(e);
    expectPoint(e.doc.lines()[0].p1, 20.5f, -10, 5, 2);
    expectPoint(e.doc.labels()[0].pos, 21.5f, -8, 8, 2);
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Move"));

    for (const char* hostile : {"abc", "1", "1,2,3,4", "1e39, 0", "nan, 1", "1,,2", "", "0, 0"}) {
        w.dialogs.answers = {QString::fromLatin1(hostile)};
        moveSelectionFromMenu(e);
    }
    EXPECT_EQ(e.history.stepCount(), 1u) << "nothing else moved anything";
    ASSERT_EQ(w.dialogs.messages.size(), 6u) << "all but the empty answer and the move by nothing are told";
    EXPECT_EQ(w.dialogs.messages[0].text,
              QStringLiteral("The distance is two or three numbers: y, x and, if wanted, z."));
    expectPoint(e.doc.lines()[0].p1, 20.5f, -10, 5, 2);
    EXPECT_EQ(parseMoveDistance(QStringLiteral("1, 2")), (std::array<float, 3>{-2, -1, 0}));

    // A move that would leave a point beyond what a single holds is refused
    // whole, and said; a move by nothing says nothing.
    w.dialogs.messages.clear();
    w.dialogs.answers = {QStringLiteral("0, 0"), QStringLiteral("0, -3e38"), QStringLiteral("0, -3e38"),
                         QStringLiteral("-3e38, 0"), QStringLiteral("-3e38, 0")};
    moveSelectionFromMenu(e);
    EXPECT_TRUE(w.dialogs.messages.empty());
    for (int i = 0; i < 4; ++i)
        moveSelectionFromMenu(e);
    EXPECT_EQ(e.history.stepCount(), 3u);
    EXPECT_EQ(e.doc.lines()[0].p1.x, 3e38f);
    EXPECT_EQ(e.doc.lines()[0].p1.y, 3e38f);
    ASSERT_EQ(w.dialogs.messages.size(), 2u) << "along x, then along y";
    EXPECT_EQ(w.dialogs.messages[1].text, QStringLiteral("The selection cannot be moved that far."));
}

// A move's step counts the memory it holds (each line's two ends and each
// label's place, before and after, and their indexes), and a step whose
// records the document no longer holds empties the history rather than
// writing past them.
TEST(MoveSelection, AStepCountsItsMemoryAndNeverReachesPastTheRecords)
{
    EditWorld w;
    Editor& e = w.editor;
    for (int i = 0; i < 1000; ++i) {
        addTestLine(e, float(i), 0, 0, float(i), 1, 0, kBlack);
        addTestLabel(e, float(i), 5, 0, kBlack, "L");
        e.doc.setLineSelected(std::size_t(i), true);
        e.doc.setLabelSelected(std::size_t(i), true);
    }
    const std::size_t before = e.history.bytes();
    ASSERT_TRUE(moveSelection(e.toolContext(), 1, 1, 0));
    EXPECT_GE(e.history.bytes() - before, 1000 * 6 * sizeof(MapPoint) + 2000 * sizeof(std::uint32_t));

    for (const bool dropLabel : {false, true}) {
        EditWorld o;
        Editor& d = o.editor;
        addTestLine(d, 0, 0, 0, 1, 1, 0, kBlack);
        addTestLine(d, 2, 2, 0, 3, 3, 0, kBlack);
        addTestLabel(d, 5, 5, 0, kBlack, "A");
        addTestLabel(d, 6, 6, 0, kBlack, "B");
        d.doc.setLineSelected(0, true);
        ASSERT_TRUE(moveSelection(d.toolContext(), 1, 1, 0));
        d.doc.clearSelection();
        d.doc.setLineSelected(1, true);
        d.doc.setLabelSelected(1, true);
        ASSERT_TRUE(moveSelection(d.toolContext(), 1, 1, 0));
        d.doc.keepFirst(dropLabel ? 2 : 1, dropLabel ? 1 : 2);
        undoEdit(d);
        EXPECT_FALSE(d.history.canUndo()) << (dropLabel ? "a label" : "a line") << " gone";
        EXPECT_EQ(d.doc.lines()[0].p1.x, 1) << "the first move stays";
    }
}

// A label moved by a drag and given new properties saves as the moved,
// renamed record; the text is read as the Label tool reads one.
TEST(LabelProperties, MovedAndRenamedLabelSavesSo)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLabel(e, 10, 20, 0, {0, 0, 255}, "Old_Name");
    addTestLabel(e, 90, 90, 0, kBlack, "Other");
    e.doc.setLabelSelected(0, true);
    EXPECT_TRUE(canEditLabelProperties(e));
    toolIconClicked(e, ToolId::Move);
    w.drag(10, 20, 12.5f, 17);

    w.dialogs.labelAnswers = {{QStringLiteral("  North Gate, and more\nsecond line"), {}, 2, QStringLiteral("12.5")}};
    mapDoubleClick(e, kLeftButton, w.at(12.5f, 17));
    ASSERT_EQ(w.dialogs.labelShown.size(), 1u) << "a double click on the label opens it";
    EXPECT_EQ(w.dialogs.labelShown[0].text, QStringLiteral("Old_Name"));
    EXPECT_EQ(w.dialogs.labelShown[0].sizeNames.size(), 4);
    EXPECT_EQ(w.dialogs.labelShown[0].sizeChoice, 1);
    EXPECT_EQ(w.dialogs.labelShown[0].z, QStringLiteral("0"));
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Label Properties"));
    EXPECT_EQ(w.saved(), "P 12.5,17,12.5,0,0,255,2,North_Gate\r\nP 90,90,0,0,0,0,1,Other\r\n");

    // Hostile answers: empty text, a height that is no number, a size out of
    // the list, a cancel; none changes the label, the last keeps its size.
    w.dialogs.labelAnswers = {{QStringLiteral(",x"), {}, 0, QStringLiteral("1")},
                              {QStringLiteral("A"), {}, 0, QStringLiteral("1e99")}};
    labelPropertiesFromMenu(e);
    labelPropertiesFromMenu(e);
    labelPropertiesFromMenu(e);
    w.dialogs.labelAnswers = {{QStringLiteral("B"), {}, 99, QStringLiteral("-3")}};
    labelPropertiesFromMenu(e);
    EXPECT_EQ(w.dialogs.messages.size(), 2u);
    EXPECT_EQ(w.saved(), "P 12.5,17,-3,0,0,255,2,B\r\nP 90,90,0,0,0,0,1,Other\r\n");
    undoEdit(e);
    undoEdit(e);
    undoEdit(e);
    EXPECT_EQ(w.saved(), "P 10,20,0,0,0,255,1,Old_Name\r\nP 90,90,0,0,0,0,1,Other\r\n");

    e.doc.setLabelSelected(1, true);
    EXPECT_FALSE(canEditLabelProperties(e)) << "two labels selected";
    const std::size_t shown = w.dialogs.labelShown.size();
    e.doc.activeLayer = std::int16_t(e.doc.labels()[1].layer == 2 ? 3 : 2);
    mapDoubleClick(e, kLeftButton, w.at(90, 90));
    EXPECT_EQ(w.dialogs.labelShown.size(), shown) << "a label of a layer not active is not opened";
}

// With snapping on, a chain drawn near old ends closes exactly on them, the
// ring shows the end that will be taken, and ends 8 pixels away or nearer
// are taken; off, the points are those under the pointer.
TEST(Snapping, ChainClosesExactlyOnOldEnds)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLine(e, 10.1234f, 20.5678f, 3, 400, 20, 3, kBlack);
    toolIconClicked(e, ToolId::Line);
    toggleSnapToLineEnds(e);

    // 8 pixels are 120 twips, whatever the scale.
    mapMouseMove(e, 0, {w.at(10.1234f, 20.5678f).x + 119, w.at(10.1234f, 20.5678f).y});
    EXPECT_TRUE(e.tools.state.marks.ringShown);
    EXPECT_EQ(e.tools.state.marks.ring.x, 10.1234f);
    mapMouseMove(e, 0, {w.at(10.1234f, 20.5678f).x + 125, w.at(10.1234f, 20.5678f).y});
    EXPECT_FALSE(e.tools.state.marks.ringShown) << "more than 8 pixels away";

    mapMouseDown(e, kLeftButton, {w.at(10.1234f, 20.5678f).x + 30, w.at(10.1234f, 20.5678f).y - 20});
    w.press(25, 80);
    mapMouseDown(e, kLeftButton, {w.at(400, 20).x - 10, w.at(400, 20).y + 40});
    ASSERT_EQ(e.doc.lineCount(), 3u);
    const std::string file = w.saved();
    EXPECT_NE(file.find("L 10.1234,20.5678,3,25,80,0,0,0,0\r\n"), std::string::npos) << file;
    EXPECT_NE(file.find("L 25,80,0,400,20,3,0,0,0\r\n"), std::string::npos) << file;

    // Off, nothing snaps and no ring shows.
    toggleSnapToLineEnds(e);
    mapMouseMove(e, 0, {w.at(400, 20).x + 10, w.at(400, 20).y});
    EXPECT_FALSE(e.tools.state.marks.ringShown);
    w.press(400.5f, 20); // continues the chain from the old end
    EXPECT_EQ(e.doc.lines()[3].p2.x, 400.5f);
}

// The ends of hidden layers, of lines hidden by the height filter and of the
// selection the Move tool drags are no places to snap to; the crosshair's
// mark and a drag of the Move tool snap.
TEST(Snapping, OnlyShownEndsAndEveryToolThatTakesPoints)
{
    EditWorld w;
    Editor& e = w.editor;
    addTestLine(e, 0, 0, 0, 10, 0, 0, kBlack, 1); // layer 1, hidden at first
    addTestLine(e, 100, 100, 0, 110, 100, 0, kBlack);
    addTestLine(e, 200, 200, 0, 210, 200, 0, kBlack);
    toggleSnapToLineEnds(e);
    const auto snapsAt = [&](float x, float y) {
        return nearestLineEnd(e.doc, e.selection.lineIndex(), e.view, e.display, w.at(x, y));
    };
    EXPECT_FALSE(snapsAt(1, 1));
    e.display.layerChecked[1] = true;
    EXPECT_TRUE(snapsAt(1, 1));
    e.display.heightFilterOn = true;
    e.view.currentZ = 500;
    EXPECT_FALSE(snapsAt(1, 1));
    e.display.heightFilterOn = false;

    toolIconClicked(e, ToolId::Crosshair);
    w.press(101, 2 + 100);
    EXPECT_EQ(e.tools.crosshair().mark().x, 100);
    EXPECT_EQ(e.tools.crosshair().mark().y, 100);
    EXPECT_EQ(e.view.readout.loc, QStringLiteral("Loc: -100 , -100"));

    // A drag from one end onto another brings the first onto the second.
    e.doc.setLineSelected(1, true);
    toolIconClicked(e, ToolId::Move);
    w.press(110.5f, 100.5f);
    w.move(101, 101);
    EXPECT_FALSE(e.tools.state.marks.ringShown && e.tools.state.marks.ring.x == 100) << "its own ends move with it";
    EXPECT_EQ(e.tools.state.marks.dy, 1) << "and are not taken";
    w.move(199, 201);
    w.release();
    EXPECT_EQ(e.doc.lines()[1].p2.x, 200);
    EXPECT_EQ(e.doc.lines()[1].p2.y, 200);
}

// A line moved on a large map is hit where it now lies: the grid the hit
// test uses is built again.
TEST(MoveTool, HitTestFindsMovedLinesOnALargeMap)
{
    EditWorld w;
    Editor& e = w.editor;
    for (int i = 0; i < 3000; ++i)
        addTestLine(e, float(i % 100) * 10, float(i / 100) * 10, 0, float(i % 100) * 10 + 5, float(i / 100) * 10, 0,
                    kBlack);
    e.selection.hitTestAt(e.doc, e.view, e.display, w.at(2, 0).x, w.at(2, 0).y, 0, true);
    ASSERT_TRUE(e.doc.lines()[0].selected);
    ASSERT_TRUE(moveSelection(e.toolContext(), 5000, 5000, 0));
    e.doc.clearSelection();
    EXPECT_TRUE(e.selection.hitTestAt(e.doc, e.view, e.display, w.at(5002, 5000).x, w.at(5002, 5000).y, 0, true));
    EXPECT_TRUE(e.doc.lines()[0].selected);
}

// Snap to Line Ends is remembered, off at first.
TEST(Snapping, RememberedInTheSettings)
{
    FakeWorld first;
    startUp(first.editor);
    EXPECT_FALSE(first.editor.tools.state.snapToEnds);
    toggleSnapToLineEnds(first.editor);
    FakeWorld second;
    const QString section = QStringLiteral("settings"), key = QStringLiteral("snapToLineEnds");
    second.settings.save(section, key, first.settings.get(section, key, {}));
    startUp(second.editor);
    EXPECT_TRUE(second.editor.tools.state.snapToEnds);
}
