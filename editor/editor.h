#pragma once

#include "document/history.h"
#include "document/mapdocument.h"
#include "editor/gamelog.h"
#include "editor/shellstate.h"
#include "palette/palette.h"
#include "platform/services.h"
#include "render/mappicture.h"
#include "render/maprenderer.h"
#include "render/underlaystate.h"
#include "tools/selection.h"
#include "tools/tooldispatch.h"
#include "view/displayoptions.h"
#include "view/view.h"
#include "view/viewkeys.h"

#include <cstdint>
#include <functional>

namespace plotwell {

// Everything the main window holds, as plain state grouped by subsystem,
// with the services it reaches the outside world through. The behaviour lives
// in the subsystems' functions; those that act on the whole editor take it.
class Editor {
public:
    explicit Editor(const Services& services);

    // Paints one whole frame of the map on the drawing surface, unless the
    // frame is held; then nothing changes, not even the colour of the
    // selection rectangle. With noSelected, selected lines are left out.
    void drawLines(bool noSelected = false);
    // What the map's frames are drawn from.
    FrameSource frameSource() const;
    // What the tools reach of the editor, for one event handed to them.
    ToolContext toolContext();

    Services services;

    MapDocument doc;
    // Every edit of the records, to be undone and redone.
    EditHistory history{doc};
    View view;
    KeyFlags keys;
    DisplayOptions display;
    UnderlayState underlay;
    ToolDispatcher tools;
    Selection selection;
    Palette palette;
    ShellState shell;
    // The game's log, followed for the player's location.
    GameLogFollower follower;

    // The last picture of the map drawn, from which frames are composed.
    MapPicture picture;

    // Something a frame shows may have changed since the last frame drawn;
    // the window sets it for every event it hands over.
    bool frameDirty = true;
    // Pending events wait until the load under way is recorded as a step
    // (see letEventsRun).
    bool eventsWaiting = false;

    // Gives the keyboard focus to the map surface; set by the window.
    std::function<void()> focusMap = [] {};
    // Runs a handler that the core starts itself (a change of the followed
    // log), which draws what it changes and returns whether it changed
    // anything; the window then shows the new state. The window skips it
    // while another handler runs or a dialog is open; such a handler must
    // find its work again on its next call.
    std::function<void(const std::function<bool()>&)> runEventHandler = [](const std::function<bool()>& handler) {
        handler();
    };
};

} // namespace plotwell
