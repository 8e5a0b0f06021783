#include "editor/gamelog.h"
#include "editor/edits.h"
#include "editor/layercommands.h"
#include "editor/mapsaving.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

using namespace plotwell;
using namespace plotwell::test;

namespace {

const QByteArray kTime = "[Mon Nov 23 18:00:00 2026] ";

} // namespace

TEST(FollowGameLog, LocationsAppendedToTheLogMoveTheMarkerSetZAndDrawThePath)
{
    QTemporaryDir dir;
    const QString log = writeBytes(dir.filePath(QStringLiteral("eqlog_Torvane_quillmere.txt")),
                                   kTime + "Your Location is 1, 2, 3\r\n"); // old: never read
    FakeWorld w;
    Editor& e = w.editor;
    setActiveLayer(e, 2);
    e.palette.activeColor = {10, 20, 30};
    e.follower.keepInView = false; // the view stays, so the marker is drawn where the log puts it
    // The map commands share the dialog: it opens on the log folder and is
    // left as they had it.
    w.fileDialog.initialFolder = QStringLiteral("/maps/");
    w.fileDialog.fileName = QStringLiteral("/maps/zone.txt");
    w.fileDialog.filter = QStringLiteral("Map files");
    w.fileDialog.answers = {log};
    followGameLogFromMenu(e);
    EXPECT_EQ(w.fileDialog.shownFolders, QStringList{QStringLiteral(".")});
    EXPECT_EQ(w.fileDialog.initialFolder, QStringLiteral("/maps/"));
    EXPECT_EQ(w.fileDialog.fileName, QStringLiteral("/maps/zone.txt"));
    EXPECT_EQ(w.fileDialog.filter, QStringLiteral("Map files"));
    EXPECT_EQ(w.settings.get(QStringLiteral("settings"), QStringLiteral("previousLogFolder"), {}),
              QDir::toNativeSeparators(dir.path()) + QDir::separator());
    toggleRecordPath(e);
    EXPECT_FALSE(pollGameLog(e));
    const auto append = [&](const QByteArray& bytes) {
        appendBytes(log, bytes);
        pollGameLog(e);
    };
    const auto markerAt = [&](float x, float y, float z) {
        EXPECT_TRUE(e.follower.marker.shown);
        EXPECT_EQ(e.follower.marker.at.x, x);
        EXPECT_EQ(e.follower.marker.at.y, y);
        EXPECT_EQ(e.view.currentZ, z);
    };

    append(kTime + "You say, 'Your Location is 9, 9, 9'\n" + kTime + "Your Location is 100.5, -200, 5.25\n" + kTime
           + "Your Loc");
    markerAt(200, -100.5f, 5.25f);
    EXPECT_EQ(e.view.readout.z, QStringLiteral("5.25"));
    EXPECT_EQ(e.doc.lineCount(), 0u) << "the first location only places the marker";
    append("ation is -30, 40.25, -7\r\n"); // a line written in two pieces
    markerAt(-40.25f, 30, -7);
    append(kTime + "Your Location is -30, 40.25, -7\r\n");
    EXPECT_EQ(e.doc.lineCount(), 1u) << "a location equal to the one before adds nothing";
    // Within a zone the walk goes on; into another zone it starts anew. The
    // marker shows at once, also over a frame a tool holds.
    e.tools.state.holdDrawing = true;
    append(kTime + "You have entered an area where levitation effects do not function.\n" + kTime
           + "Your Location is 50, 60, 0\n" + kTime + "You have entered Qeynos Hills.\n" + kTime
           + "Your Location is 70, 80, 1\n");
    markerAt(-80, -70, 1);
    EXPECT_EQ(e.doc.lineCount(), 2u);
    EXPECT_FALSE(e.tools.state.holdDrawing);

    // A log emptied or made anew starts a new walk too.
    writeBytes(log, kTime + "Your Location is 0, 0, 0\n" + kTime + "Your Location is 1"); // cut short
    pollGameLog(e);
    markerAt(0, 0, 0);
    QFile::remove(log);
    pollGameLog(e);
    // The new file's first bytes do not finish the old file's last line.
    writeBytes(log,
               "11, 22, 33\n" + kTime + "Your Location is 5, -5, 1\n" + QByteArray(100000, 'x') + "\n" + kTime
                   + "Your Location is 12345.67, 1e3, 10\n");
    pollGameLog(e);
    markerAt(-1000, -12345.67f, 10);

    // The marker is drawn over the frame, and the pen is left as the frame left it.
    const auto ops = w.surface.only(RecordingSurface::Op::Line);
    ASSERT_FALSE(ops.empty());
    EXPECT_EQ(ops.back().pen, PlayerMarker::kColour);
    EXPECT_EQ(ops.back().a, -1000.0f);
    // Its cross is open at the centre: four arms from 4 to 15 pixels out, 3 pixels wide.
    ASSERT_GE(ops.size(), 5u);
    const float cx = ops.back().a, cy = ops.back().b - 60;
    std::vector<float> arms;
    for (auto op = ops.end() - 4; op != ops.end(); ++op)
        arms.insert(arms.end(), {op->a - cx, op->b - cy, op->c - cx, op->d - cy, float(op->penWidth)});
    EXPECT_EQ(arms, (std::vector<float>{-225, 0, -60, 0, 3, 60, 0, 225, 0, 3, 0, -225, 0, -60, 3, 0, 60, 0, 225, 3}));
    EXPECT_NEAR((ops.end() - 5)->c - cx, PlayerMarker::kRingRadius, 0.01f) << "the ring closes where it began";
    EXPECT_EQ(w.surface.penColor(), kBlack);
    EXPECT_EQ(w.surface.penWidth(), 2);

    EXPECT_EQ(e.history.undoText(), QStringLiteral("Undo Path"));
    e.doc.homes[2].layerFile = dir.filePath(QStringLiteral("walk.txt"));
    saveAllLayers(e);
    EXPECT_EQ(fileBytes(e.doc.homes[2].layerFile).toStdString(),
              "L 200,-100.5,5.25,-40.25,30,-7,10,20,30\r\n"
              "L -40.25,30,-7,-60,-50,0,10,20,30\r\n"
              "L 5,-5,1,-1000,-12345.67,10,10,20,30\r\n");
    // Following another log starts from nothing: the old marker goes, and the
    // old log's unfinished line does not begin the new one's first.
    append(kTime + "Your Location is 1");
    const QString other = writeBytes(dir.filePath(QStringLiteral("eqlog_Other_quillmere.txt")), "");
    followGameLog(e, other);
    EXPECT_FALSE(e.follower.marker.shown);
    appendBytes(other, "2, 3, 4\n" + kTime + "Your Location is 7, 8, 9\n");
    pollGameLog(e);
    markerAt(-8, -7, 9);
    EXPECT_EQ(e.doc.lineCount(), 3u) << "the first location of the new log draws no path";

    stopFollowing(e);
    EXPECT_FALSE(e.follower.marker.shown);
    EXPECT_FALSE(e.follower.following());
}
