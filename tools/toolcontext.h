#pragma once

#include "document/colorrgb.h"
#include "document/history.h"
#include "document/mapdocument.h"
#include "platform/dialogs.h"
#include "platform/drawingsurface.h"
#include "platform/services.h"
#include "tools/selection.h"
#include "view/displayoptions.h"
#include "view/editmarks.h"
#include "view/view.h"
#include "view/viewkeys.h"

#include <functional>

namespace plotwell {

// The map's mouse pointer.
enum class MapCursor { Arrow, Move };

// The tools' own state that the rest of the editor reads: whether a frame is
// held, and the map's pointer.
struct ToolState {
    // While set, a frame draws nothing, so that what a tool drew straight on
    // the surface (the crosshair's text, the rubber band) stays.
    bool holdDrawing = false;
    MapCursor mapCursor = MapCursor::Arrow;
    // Edit > Snap to Line Ends: the points the tools take snap to a line end
    // near the pointer.
    bool snapToEnds = false;
    // What the tools show over the map while they work.
    EditMarks marks;
};

// What a tool reaches of the editor: the document with its history, the
// view, the selection, what is shown, the keys held, the active colour, the
// tools' state, the services it uses, and a frame drawn on request. The
// editor makes one for every event it hands to the tools.
struct ToolContext {
    MapDocument& doc;
    EditHistory& history;
    View& view;
    Selection& selection;
    const DisplayOptions& display;
    const KeyFlags& keys;
    const ColorRGB& activeColor;
    ToolState& state;
    DrawingSurface& surface;
    Dialogs& dialogs;
    Clipboard& clipboard;
    // Draws one frame of the map now, as the render loop would; nothing
    // while the frame is held.
    std::function<void()> drawFrame;
};

} // namespace plotwell
