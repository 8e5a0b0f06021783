#include "editor/recovery.h"
#include "document/mapwriter.h"
#include "editor/edits.h"
#include "editor/mapevents.h"
#include "editor/maploading.h"
#include "editor/mapsaving.h"
#include "editor/viewcommands.h"
#include "platform/recoveryplace.h"
#include "view/zoom.h"

#include "tests/support/childrun.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// A temporary folder and a clock the test moves.
struct FakePlace : FakeRecoveryPlace {
    FakePlace() { path = dir.path(); }
    QTemporaryDir dir;
};

// The copy of layer 0 in the one run folder there is, or "(none)".
std::string copyOfBaseLayer(const FakePlace& place)
{
    const QDir folder(place.folder());
    for (const QString& run : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString records = folder.filePath(run + QStringLiteral("/layer0.txt"));
        if (QFile::exists(records))
            return fileBytes(records).toStdString();
    }
    return "(none)";
}

void drawLine(Editor& e, float y)
{
    toolIconClicked(e, ToolId::Line);
    mapMouseDown(e, kLeftButton, {10, y});
    mapMouseDown(e, kLeftButton, {20, y});
    mapKeyDown(e, Key::Escape, 0);
}

TEST(Recovery, ACopyFollowsTheEditsWhenTheyPauseAndGoesWhenTheLayerIsSaved)
{
    FakePlace place;
    FakeWorld w;
    Editor& e = w.editor;
    RecoveryKeeper keeper(place);
    const auto tickAt = [&](qint64 t) {
        place.now = t;
        keeper.tick(e);
        keeper.waitForCopy();
        return copyOfBaseLayer(place);
    };
    drawLine(e, 1);
    EXPECT_EQ(tickAt(0), "(none)");
    EXPECT_EQ(tickAt(2999), "(none)");
    EXPECT_EQ(tickAt(3000), "L 10,1,0,20,1,0,0,0,0\r\n");
    drawLine(e, 2);
    EXPECT_EQ(tickAt(4000), "L 10,1,0,20,1,0,0,0,0\r\n");
    EXPECT_EQ(tickAt(7000), "L 10,1,0,20,1,0,0,0,0\r\nL 10,2,0,20,2,0,0,0,0\r\n");
    undoEdit(e);
    undoEdit(e);
    EXPECT_EQ(tickAt(7500), "(none)") << "undone back to what was saved";
    redoEdit(e);
    redoEdit(e); // back to the edits whose copy went, which had paused long since
    EXPECT_EQ(tickAt(8000), "L 10,1,0,20,1,0,0,0,0\r\nL 10,2,0,20,2,0,0,0,0\r\n");
    w.fileDialog.answers = {QDir(place.folder()).filePath(QStringLiteral("saved.txt"))};
    saveAllLayers(e);
    EXPECT_EQ(tickAt(11500), "(none)");

    // Edits that never pause are copied after the longest wait, no sooner.
    qint64 firstCopy = -1;
    for (qint64 t = 30000; t <= 70000 && firstCopy < 0; t += 1000) {
        drawLine(e, float(t / 1000));
        if (tickAt(t) != "(none)")
            firstCopy = t;
    }
    EXPECT_EQ(firstCopy, 30000 + RecoveryKeeper::kLongestWaitMsecs);
}

TEST(Recovery, ALayerJustReadWholeFromItsFileHasNothingToKeep)
{
    FakePlace place;
    FakeWorld w;
    RecoveryKeeper keeper(place);
    w.fileDialog.answers = {writeBytes(place.dir.filePath(QStringLiteral("zone.txt")), "L 1,2,0,3,4,0,0,0,0\r\n")};
    loadLayerFromMenu(w.editor, 0);
    ASSERT_TRUE(keeper.flush(w.editor));
    EXPECT_EQ(copyOfBaseLayer(place), "(none)");
    drawLine(w.editor, 5);
    ASSERT_TRUE(keeper.flush(w.editor));
    EXPECT_EQ(copyOfBaseLayer(place).rfind("L 1,2,0,3,4,0,0,0,0\r\nL ", 0), 0u) << "the file's line, then the new one";
}

TEST(Recovery, TheBaseLayerComesBackIntoTheBaseLayerWhicheverLayerIsActive)
{
    FakePlace place;
    {
        FakeWorld w;
        RecoveryKeeper keeper(place);
        drawLine(w.editor, 4);
        ASSERT_TRUE(keeper.flush(w.editor));
    }
    FakeWorld w;
    drawLine(w.editor, 9); // replaced by the copy, not kept beside it
    w.editor.doc.activeLayer = 2;
    RecoveryKeeper(place).recover(w.editor);
    EXPECT_EQ(formatLayer(w.editor.doc, 0), "L 10,4,0,20,4,0,0,0,0\r\n");
    EXPECT_EQ(formatLayer(w.editor.doc, 2), "");
    EXPECT_EQ(w.editor.doc.activeLayer, 2);
}

#ifdef Q_OS_UNIX
TEST(Recovery, CopiesOfAProgramThatDiedAreOffered)
{
    FakePlace place;
    // The child ends without a word, as a crash would: its lock stays behind.
    const auto ended = runInChild({}, [&] {
        FakeWorld w;
        RecoveryKeeper keeper(place);
        drawLine(w.editor, 3);
        return keeper.flush(w.editor) ? "written" : "not written";
    });
    EXPECT_EQ(ended, std::optional<std::string>("written"));
    EXPECT_TRUE(RecoveryKeeper(place).canRecover());
}
#endif

} // namespace
