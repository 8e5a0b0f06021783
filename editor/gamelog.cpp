#include "editor/gamelog.h"

#include "editor/editor.h"
#include "editor/edits.h"
#include "editor/gameloc.h"
#include "editor/maploading.h"
#include "platform/filetail.h"
#include "platform/filewatch.h"
#include "platform/imagesurface.h"
#include "tools/recordtext.h"
#include "view/viewcontrol.h"

#include <QDir>

#include <cmath>

namespace plotwell {
namespace {

const QString kSettings = QStringLiteral("settings");
const QString kLogFolderKey = QStringLiteral("previousLogFolder");
const QString kKeepInViewKey = QStringLiteral("keepPlayerInView");
// A log that grew by megabytes while the program was busy is read a few
// reads a call, so that the window keeps answering; the timer reads on.
constexpr int kReadsPerPoll = 4;

// The log's path from the open dialog, which is left as the map commands had
// it, since they share it; none when cancelled.
QString askLogPath(Editor& editor)
{
    FileDialog& dialog = editor.services.fileDialog;
    const QString folderBefore = dialog.initialFolder;
    const QString nameBefore = dialog.fileName;
    const QString filterBefore = dialog.filter;
    dialog.initialFolder = editor.services.settings.get(kSettings, kLogFolderKey, QStringLiteral("."));
    dialog.fileName.clear();
    dialog.filter = QStringLiteral("Game logs (eqlog_*.txt)|eqlog_*.txt|Text files (*.txt)|*.txt|All Files(*.*)|*.*");
    const bool chosen = dialog.showOpen() && !dialog.fileName.isEmpty();
    const QString path = QDir::toNativeSeparators(dialog.fileName);
    dialog.initialFolder = folderBefore;
    dialog.fileName = nameBefore;
    dialog.filter = filterBefore;
    return chosen ? path : QString();
}

// The walk from one location to the next, in the active colour on the active
// layer, each end at its own location's height: composed as a drawn line is,
// so it saves like any other line, and one step of the history.
void appendPathLine(Editor& editor, const MapPoint& from, const MapPoint& to)
{
    std::int16_t layer = 0;
    const AppendMark mark = appendMark(editor.doc);
    // Every single writes as text that reads back, so the text always converts.
    editor.doc.addLine(lineRecordText(from, to, editor.palette.activeColor), layer, editor.view.currentScale);
    editor.history.recordAppended(mark, QStringLiteral("Path"));
}

void moveTo(Editor& editor, const MapPoint& loc)
{
    PlayerMarker& marker = editor.follower.marker;
    // A location at the same place on the map, whatever its height, draws
    // nothing: a line needs two places.
    const bool moved = marker.at.x != loc.x || marker.at.y != loc.y;
    if (editor.follower.recordPath && marker.shown && moved && !editor.follower.pathBroken)
        appendPathLine(editor, marker.at, loc);
    editor.follower.pathBroken = false;
    marker.shown = true;
    marker.at = loc;
    editor.view.currentZ = loc.z;
    editor.view.readout.z = singleCaption(loc.z);
}

} // namespace

GameLogFollower::GameLogFollower() = default;
GameLogFollower::~GameLogFollower() = default;

void followGameLogFromMenu(Editor& editor)
{
    if (editor.follower.following()) {
        stopFollowing(editor);
        return;
    }
    const QString path = askLogPath(editor);
    if (path.isEmpty())
        return;
    editor.services.settings.save(kSettings, kLogFolderKey, folderOf(path));
    followGameLog(editor, path);
}

void followGameLog(Editor& editor, const QString& path)
{
    stopFollowing(editor);
    GameLogFollower& follower = editor.follower;
    follower.tail = std::make_unique<FileTail>(path);
    follower.pathBroken = true;
    follower.watch = std::make_unique<FileWatch>(
        path, [&editor] { editor.runEventHandler([&editor] { return pollGameLog(editor); }); },
        follower.useSystemWatch);
}

void stopFollowing(Editor& editor)
{
    GameLogFollower& follower = editor.follower;
    follower.watch.reset();
    follower.tail.reset();
    follower.lines.reset();
    if (follower.marker.shown) {
        follower.marker.shown = false;
        releaseHeldFrame(editor);
    }
}

void toggleRecordPath(Editor& editor)
{
    editor.follower.recordPath = !editor.follower.recordPath;
}

void toggleKeepPlayerInView(Editor& editor)
{
    GameLogFollower& follower = editor.follower;
    follower.keepInView = !follower.keepInView;
    editor.services.settings.save(kSettings, kKeepInViewKey,
                                  follower.keepInView ? QStringLiteral("1") : QStringLiteral("0"));
    if (keepPlayerInView(editor))
        releaseHeldFrame(editor);
}

void loadFollowSettings(Editor& editor)
{
    editor.follower.keepInView =
        editor.services.settings.get(kSettings, kKeepInViewKey, QStringLiteral("1")) != QStringLiteral("0");
}

bool keepPlayerInView(Editor& editor)
{
    const PlayerMarker& marker = editor.follower.marker;
    if (!editor.follower.keepInView || !marker.shown || !editor.follower.following())
        return false;
    View& view = editor.view;
    const SurfacePoint at = playerMarkerCentre(view, marker);
    const float marginX = view.mapWidth / 10;
    const float marginY = view.mapHeight / 10;
    // NaN compares false: a marker at no place is kept nowhere.
    const bool inside =
        at.x >= marginX && at.x <= view.mapWidth - marginX && at.y >= marginY && at.y <= view.mapHeight - marginY;
    if (inside || !std::isfinite(at.x) || !std::isfinite(at.y))
        return false;
    // Whole device pixels, so that the kept picture of the map scrolls
    // rather than being drawn again.
    const auto* image = dynamic_cast<const ImageSurface*>(&editor.services.surface);
    const double step = 15.0 / (image ? image->pixelRatio() : 1.0);
    const double dx = std::round((double(view.mapWidth) / 2 - at.x) / step) * step;
    const double dy = std::round((double(view.mapHeight) / 2 - at.y) / step) * step;
    return adjustOffset(view, float(dx), float(dy));
}

bool pollGameLog(Editor& editor)
{
    GameLogFollower& follower = editor.follower;
    if (!follower.tail)
        return false;
    bool moved = false;
    for (int i = 0; i < kReadsPerPoll; ++i) {
        const FileTail::Bytes got = follower.tail->read();
        if (got.restarted) {
            follower.lines.reset();
            follower.pathBroken = true;
        }
        follower.lines.feed(got.bytes, [&](std::string_view line) {
            if (const auto loc = parseLocLine(line)) {
                moveTo(editor, *loc);
                moved = true;
            } else if (isZoneEntryLine(line)) {
                follower.pathBroken = true;
            }
        });
        if (!got.more)
            break;
    }
    if (!moved)
        return false;
    keepPlayerInView(editor);
    // The marker is shown at once, over whatever a tool held on the map.
    releaseHeldFrame(editor);
    editor.drawLines();
    return true;
}

} // namespace plotwell
