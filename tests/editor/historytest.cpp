#include "document/mapwriter.h"
#include "editor/edits.h"
#include "editor/mapevents.h"
#include "editor/maploading.h"
#include "editor/palettecommands.h"
#include "editor/viewcommands.h"
#include "view/zoom.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(EditHistory, UndoingADeletionBringsTheRecordsBackSelectedAndTheMenuNamesTheStep)
{
    FakeWorld w;
    Editor& e = w.editor;
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo"));
    toolIconClicked(e, ToolId::Line);
    for (float x : {100.f, 200.f, 300.f, 400.f})
        mapMouseDown(e, kLeftButton, {x, x});
    e.doc.setLineSelected(0, true);
    e.doc.setLineSelected(2, true);
    mapKeyDown(e, Key::Delete, 0);
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Delete"));
    {
        LayerStep loading(e); // a load that lets events run holds undo back
        EXPECT_FALSE(e.history.canUndo());
    }
    undoEdit(e);
    EXPECT_EQ(e.history.redoText(), QStringLiteral("Redo Delete"));
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Line"));
    ASSERT_EQ(e.doc.lineCount(), 3u);
    EXPECT_TRUE(e.doc.lines()[0].selected && !e.doc.lines()[1].selected && e.doc.lines()[2].selected);
    redoEdit(e);
    EXPECT_FALSE(e.doc.hasSelection());
    EXPECT_FALSE(e.history.canRedo());
}

TEST(EditHistory, AnEditMadeWhileALoadLetsEventsRunIsAStepOfItsOwn)
{
    QTemporaryDir dir;
    FakeWorld w;
    Editor& e = w.editor;
    w.fileDialog.answers = {writeBytes(dir.filePath(QStringLiteral("a.txt")), "L 10,20,0,300,400,5,255,0,0\r\n")};
    toolIconClicked(e, ToolId::Line);
    mapMouseDown(e, kLeftButton, {100, 100});
    // The second click of the line comes while the base layer's fit lets events run.
    w.events.during = [&e] { mapMouseDown(e, kLeftButton, {200, 300}); };
    loadLayerFromMenu(e, 0);
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Line"));
    undoEdit(e);
    EXPECT_EQ(formatLayer(e.doc, 0), "L 10,20,0,300,400,5,255,0,0\r\n");
    undoEdit(e);
    EXPECT_EQ(e.doc.lineCount(), 0u);
    EXPECT_TRUE(e.doc.homes[0].layerFile.isEmpty()) << "the load undone, the layer has no file again";
}

// A stroke and a strip drag are one step each, and never one with each other,
// however their presses and releases interleave.
TEST(EditHistory, GesturesAreOneStepEachAndNeverMergeWithAnotherKind)
{
    FakeWorld w;
    Editor& e = w.editor;
    loadLayerFromMenu(e, 1); // cancelled on an empty layer: nothing to undo
    EXPECT_FALSE(e.history.canUndo());
    toolIconClicked(e, ToolId::Freehand);
    mapMouseDown(e, kLeftButton, {300, 300});
    for (float x : {300.f, 600.f, 900.f})
        mapMouseMove(e, kLeftButton, {x, 300});
    ASSERT_EQ(e.doc.lineCount(), 2u);
    e.doc.setLineSelected(0, true);
    stripMouseMove(e, 2, kLeftButton, 0); // blue 0 on a black line: nothing changes
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Freehand"));
    stripMouseMove(e, 0, kLeftButton, kStripWidth); // black made red: one channel differs
    mapMouseMove(e, kLeftButton, {1200, 300});
    stripMouseMove(e, 0, kLeftButton, kStripWidth / 2);
    e.doc.setLineSelected(1, true); // the drag goes on over another selection
    stripMouseMove(e, 0, kLeftButton, kStripWidth / 4);
    EXPECT_EQ(e.doc.lines()[1].r, stripValue(kStripWidth / 4));
    swatchPressed(e, 5, kLeftButton); // a colour picked while the strip is held is a step of its own
    std::vector<std::pair<QString, std::size_t>> steps;
    while (e.history.canUndo()) {
        steps.emplace_back(e.history.undoText(), e.doc.lineCount());
        undoEdit(e);
    }
    const std::vector<std::pair<QString, std::size_t>> expected = {{"Undo Recolour", 3}, {"Undo Recolour", 3},
                                                                   {"Undo Recolour", 3}, {"Undo Freehand", 3},
                                                                   {"Undo Recolour", 2}, {"Undo Freehand", 2}};
    EXPECT_EQ(steps, expected);
    EXPECT_EQ(e.doc.lineCount(), 0u);
    e.history.setByteLimit(0); // every step goes, and the memory counted with them
    EXPECT_EQ(e.history.bytes(), 0u);
}

TEST(EditHistory, OverItsMemoryTheOldestStepsGo)
{
    FakeWorld w;
    Editor& e = w.editor;
    toolIconClicked(e, ToolId::Line);
    for (int i = 0; i < 7; ++i)
        mapMouseDown(e, kLeftButton, {float(10 * i), 10}); // six Line steps of one size
    e.history.setByteLimit(e.history.bytes() / 3);
    while (e.history.canUndo())
        undoEdit(e);
    EXPECT_EQ(e.doc.lineCount(), 4u) << "the two newest lines undone, the older ones kept";
}

} // namespace
