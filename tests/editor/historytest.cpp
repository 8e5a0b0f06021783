#include "document/mapwriter.h"
#include "editor/edits.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "editor/palettecommands.h"
#include "editor/viewcommands.h"
#include "tools/intersection.h"
#include "view/zoom.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// What Save all layers would write for each layer, with the layer's file and
// caption, and the layer of every record in array order: equal exactly when
// the records are the same at the same indices.
std::string savedText(const Editor& e)
{
    std::string s;
    for (std::int16_t n = 0; n < kLayerCount; ++n)
        s += (e.doc.layerFile[n] + QLatin1Char('|') + e.layers.captions[n]).toStdString() + "\n" + formatLayer(e.doc, n);
    for (const MapLine& line : e.doc.lines())
        s += char('0' + line.layer);
    s += '|';
    for (const MapLabel& label : e.doc.labels())
        s += char('0' + label.layer);
    return s;
}

// Makes one random edit the way the user makes it, or changes only the
// selection, which is no step.
struct RandomUser {
    FakeWorld& w;
    QStringList files;
    std::mt19937 rng;

    SurfacePoint point() { return {float(100 + rng() % 6000), float(100 + rng() % 6000)}; }
    void use(ToolId tool)
    {
        if (w.editor.tools.current() != tool)
            w.editor.tools.choose(w.editor, tool);
    }

    void edit(unsigned kind)
    {
        Editor& e = w.editor;
        if (kind == 0) { // a click of a line chain, which goes on across edits
            use(ToolId::Line);
            e.tools.press(e, kLeftButton, point());
            if (rng() % 4 == 0)
                mapKeyDown(e, Key::Escape, 0);
        } else if (kind == 1) { // a freehand stroke
            use(ToolId::Freehand);
            const SurfacePoint from = point();
            for (int i = 0; i < 8; ++i)
                e.tools.move(e, kLeftButton, {from.x + float(i) * 40, from.y + float(i % 3) * 20});
            e.tools.release(e);
        } else if (kind == 2) {
            use(ToolId::Label);
            e.tools.press(e, kLeftButton, point());
            e.tools.label().commitCaption(e, rng() % 3 ? QStringLiteral("Old Bank") : QStringLiteral("(new label)"));
        } else if (kind == 3) { // the selection alone
            for (std::size_t i = 0; i < e.doc.lineCount(); ++i)
                e.doc.setLineSelected(i, rng() % 3 == 0);
            for (std::size_t i = 0; i < e.doc.labelCount(); ++i)
                e.doc.setLabelSelected(i, rng() % 2 == 0);
        } else if (kind == 4) {
            mapKeyDown(e, Key::Delete, rng() % 2 ? kShiftMask : 0);
        } else if (kind == 5) {
            e.palette.presetColors[3] = {std::uint8_t(rng()), std::uint8_t(rng()), 7};
            swatchPressed(e, 3, kLeftButton);
        } else if (kind == 6) { // a drag along the green strip
            for (int i = 0; i < 4; ++i)
                stripMouseMove(e, 1, kLeftButton, float(rng() % 1400));
            stripReleased(e);
        } else if (kind == 7 && e.doc.lineCount() > 0) {
            e.doc.clearSelection();
            e.doc.setLineSelected(rng() % e.doc.lineCount(), true);
            e.doc.setLineSelected(rng() % e.doc.lineCount(), true);
            plotIntersection(e);
        } else if (kind == 8) { // loaded from the menu, or the dialog cancelled
            w.fileDialog.answers = {rng() % 4 ? files[int(rng() % 2)] : QString()};
            loadLayerFromMenu(e, std::int16_t(rng() % kLayerCount));
        } else if (kind == 9) {
            dropFiles(e, {files[int(rng() % 2)]});
        } else if (kind == 10 && rng() % 4 == 0) {
            closeAllLayers(e);
        }
    }
};

TEST(EditHistory, RandomEditsUndoBackToTheStartAndRedoToTheEnd)
{
    QTemporaryDir dir;
    const QStringList files{
        writeBytes(dir.filePath(QStringLiteral("a.txt")), "L 10,20,0,300,400,5,255,0,0\r\nP 50,60,7,0,0,255,2,Camp\r\n"
                                                          "L -100,20,0,300,-400,5,0,128,0\r\n"),
        writeBytes(dir.filePath(QStringLiteral("b.txt")), "L 1000,2000,3,3000,2500,3,1,2,3\r\nP 7,7,7,9,9,9,1,Bank\r\n")};
    for (unsigned seed = 1; seed <= 12; ++seed) {
        FakeWorld w;
        Editor& e = w.editor;
        RandomUser user{w, files, std::mt19937(seed)};
        dropFiles(e, {files[0]});
        e.history.clear();
        // The state after each step of the history, to be found again by undoing and redoing.
        std::vector<std::string> states{savedText(e)};
        std::size_t at = 0;
        for (int edit = 0; edit < 200; ++edit) {
            const unsigned kind = user.rng() % 13;
            if (kind == 11) {
                at -= e.history.canUndo() ? 1 : 0;
                e.history.undo(e);
            } else if (kind == 12) {
                at += e.history.canRedo() ? 1 : 0;
                e.history.redo(e);
            } else {
                user.edit(kind);
                if (e.history.doneCount() == at + 1) {
                    states.resize(++at);
                    states.push_back(savedText(e));
                }
            }
            w.surface.calls.clear();
            // Every change of the records is a step: without one, nothing changed.
            ASSERT_EQ(e.history.doneCount(), at) << "seed " << seed << ", edit " << edit << ", kind " << kind;
            ASSERT_EQ(savedText(e), states[at]) << "seed " << seed << ", edit " << edit << ", kind " << kind;
        }
        while (e.history.canUndo())
            e.history.undo(e);
        EXPECT_EQ(savedText(e), states.front()) << "seed " << seed;
        while (e.history.canRedo())
            e.history.redo(e);
        EXPECT_EQ(savedText(e), states.back()) << "seed " << seed;
    }
}

TEST(EditHistory, UndoingADeletionBringsTheRecordsBackSelectedAndTheMenuNamesTheStep)
{
    FakeWorld w;
    Editor& e = w.editor;
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo"));
    e.tools.choose(e, ToolId::Line);
    for (float x : {100.f, 200.f, 300.f, 400.f})
        e.tools.press(e, kLeftButton, {x, x});
    e.doc.setLineSelected(0, true);
    e.doc.setLineSelected(2, true);
    mapKeyDown(e, Key::Delete, 0);
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Delete"));
    {
        LayerStep loading(e); // a load that lets events run holds undo back
        EXPECT_FALSE(e.history.canUndo());
    }
    e.history.undo(e);
    EXPECT_EQ(e.history.redoText(), QStringLiteral("Redo Delete"));
    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Line"));
    ASSERT_EQ(e.doc.lineCount(), 3u);
    EXPECT_TRUE(e.doc.lines()[0].selected && !e.doc.lines()[1].selected && e.doc.lines()[2].selected);
    e.history.redo(e);
    EXPECT_FALSE(e.doc.hasSelection());
    EXPECT_FALSE(e.history.canRedo());
}

TEST(EditHistory, OverItsMemoryTheOldestStepsGo)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.tools.choose(e, ToolId::Line);
    for (int i = 0; i < 7; ++i)
        e.tools.press(e, kLeftButton, {float(10 * i), 10}); // six Line steps of one size
    e.history.setByteLimit(e.history.bytes() / 3);
    while (e.history.canUndo())
        e.history.undo(e);
    EXPECT_EQ(e.doc.lineCount(), 4u) << "the two newest lines undone, the older ones kept";
}

} // namespace
