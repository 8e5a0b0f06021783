#pragma once

#include "platform/linesplitter.h"
#include "render/playermarker.h"

#include <QString>

#include <memory>

namespace plotwell {

class Editor;
class FileTail;
class FileWatch;

// Mapping from the game: the game writes every message to its log file
// (after /log), and each answer to /loc moves the player's marker over the
// map and puts the height in the current Z. With Record Path on, the walk
// from one location to the next is drawn as lines.
struct GameLogFollower {
    GameLogFollower();
    ~GameLogFollower();
    GameLogFollower(const GameLogFollower&) = delete;
    GameLogFollower& operator=(const GameLogFollower&) = delete;

    // The log followed and how far it has been read; none while not following.
    std::unique_ptr<FileTail> tail;
    LineSplitter lines;
    std::unique_ptr<FileWatch> watch;
    // Where the player stood at the last location read; shown while following.
    PlayerMarker marker;
    bool recordPath = false;
    // Tools > Keep Player in View: the view pans to keep the marker away
    // from the map's edges.
    bool keepInView = true;
    // The next location starts a new path: the player may be anywhere after
    // the log was emptied or made anew, or after entering another zone.
    bool pathBroken = true;
    // Whether the system's change reports are heard besides the timer.
    bool useSystemWatch = true;

    bool following() const { return tail != nullptr; }
};

// Tools > Follow Game Log...: asks for the game's log file (in the folder
// chosen last time) and follows it; chosen while following, it stops.
void followGameLogFromMenu(Editor& editor);
// Follows a log from its end as it is now: only what the game appends from
// here on is read. Ends any earlier following.
void followGameLog(Editor& editor, const QString& path);
// Tools > Stop Following: the marker goes; the file is no longer read.
void stopFollowing(Editor& editor);
// Tools > Record Path.
void toggleRecordPath(Editor& editor);
// Tools > Keep Player in View, remembered in the settings.
void toggleKeepPlayerInView(Editor& editor);
// Reads the remembered Keep Player in View; on at first.
void loadFollowSettings(Editor& editor);

// When the marker lies within a tenth of the map's width or height of an
// edge, or outside, pans the view by whole pixels to put it back in the
// middle; the zoom stays. True when the view moved.
bool keepPlayerInView(Editor& editor);

// Reads what the game appended since the last read and acts on each location
// in it; a frame held by a tool is let go and the map is drawn when the
// marker moved. The log's watch calls it; true when the marker moved.
bool pollGameLog(Editor& editor);

} // namespace plotwell
