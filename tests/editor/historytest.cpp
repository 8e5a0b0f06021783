#include "document/mapwriter.h"
#include "editor/edits.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "editor/palettecommands.h"
#include "editor/viewcommands.h"
#include "tools/deletion.h"
#include "tools/intersection.h"
#include "view/zoom.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
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

    float coordinate() { return float(100 + rng() % 6000); }
    SurfacePoint point() { return {coordinate(), coordinate()}; }
    void use(ToolId tool)
    {
        if (w.editor.tools.current() != tool)
            w.editor.tools.choose(w.editor, tool);
    }

    void edit(unsigned kind)
    {
        Editor& e = w.editor;
        switch (kind) {
        case 0: // a click of a line chain, which goes on across edits
            use(ToolId::Line);
            e.tools.press(e, kLeftButton, point());
            if (rng() % 4 == 0)
                mapKeyDown(e, Key::Escape, 0);
            break;
        case 1: { // a freehand stroke
            use(ToolId::Freehand);
            const SurfacePoint from = point();
            e.tools.press(e, kLeftButton, from);
            for (int i = 0; i < 8; ++i)
                e.tools.move(e, kLeftButton, {from.x + float(i) * 40, from.y + float(i % 3) * 20});
            e.tools.release(e);
            break;
        }
        case 2: {
            use(ToolId::Label);
            e.tools.press(e, kLeftButton, point());
            const char* const texts[] = {"Gate", "(new label)", "Old Bank"};
            e.tools.label().commitCaption(e, QString::fromLatin1(texts[rng() % 3]));
            break;
        }
        case 3: // selection alone
            for (std::size_t i = 0; i < e.doc.lineCount(); ++i)
                e.doc.setLineSelected(i, rng() % 3 == 0);
            for (std::size_t i = 0; i < e.doc.labelCount(); ++i)
                e.doc.setLabelSelected(i, rng() % 2 == 0);
            break;
        case 4:
            mapKeyDown(e, Key::Delete, rng() % 2 ? kShiftMask : 0);
            break;
        case 5:
            e.palette.presetColors[3] = {std::uint8_t(rng()), std::uint8_t(rng()), 7};
            swatchPressed(e, 3, kLeftButton);
            break;
        case 6: // a drag along the green strip
            for (int i = 0; i < 4; ++i)
                stripMouseMove(e, 1, kLeftButton, float(rng() % 1400));
            stripReleased(e);
            break;
        case 7:
            e.doc.clearSelection();
            for (int i = 0; i < 2 && e.doc.lineCount() > 0; ++i)
                e.doc.setLineSelected(rng() % e.doc.lineCount(), true);
            plotIntersection(e);
            break;
        case 8:
            w.fileDialog.answers = {rng() % 4 ? files[int(rng() % 2)] : QString()};
            loadLayerFromMenu(e, std::int16_t(rng() % kLayerCount));
            break;
        case 9:
            dropFiles(e, {files[int(rng() % 2)]});
            break;
        default:
            if (rng() % 4 == 0)
                closeAllLayers(e);
            break;
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
            const auto selected = [](const auto& r) { return r.selected; };
            ASSERT_EQ(e.doc.hasSelection(), std::any_of(e.doc.lines().begin(), e.doc.lines().end(), selected)
                                                || std::any_of(e.doc.labels().begin(), e.doc.labels().end(), selected));
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
    EXPECT_EQ(e.doc.lines()[2].p1.x, 300.f);
    EXPECT_TRUE(e.doc.hasSelection());
    e.history.redo(e);
    EXPECT_FALSE(e.doc.hasSelection());
    EXPECT_FALSE(e.history.canRedo());
}

TEST(EditHistory, OverItsMemoryTheOldestStepsGo)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.tools.choose(e, ToolId::Line);
    e.tools.press(e, kLeftButton, {10, 10});
    e.tools.press(e, kLeftButton, {20, 20});
    const std::size_t oneStep = e.history.bytes();
    for (int i = 0; i < 4; ++i)
        e.tools.press(e, kLeftButton, {float(30 + i), 30});
    e.history.setByteLimit(2 * oneStep);
    EXPECT_EQ(e.history.stepCount(), 2u);
    e.history.undo(e);
    e.history.undo(e);
    e.history.undo(e);
    EXPECT_EQ(e.doc.lineCount(), 3u) << "the two newest lines undone, the older ones kept";
}

} // namespace
