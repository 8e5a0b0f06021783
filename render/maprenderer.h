#pragma once

#include "document/colorrgb.h"
#include "document/mapdocument.h"
#include "platform/drawingsurface.h"
#include "render/playermarker.h"
#include "render/underlaystate.h"
#include "view/displayoptions.h"
#include "view/editmarks.h"
#include "view/view.h"

#include <QRect>

#include <array>
#include <cstddef>
#include <optional>

namespace plotwell {

// What a frame is drawn from.
struct FrameSource {
    const MapDocument& doc;
    const View& view;
    const DisplayOptions& display;
    const UnderlayState& underlay;
    // Drawn over the map while the game's log is followed.
    const PlayerMarker* player = nullptr;
    // Drawn over everything while a tool drags the selection or snaps.
    const EditMarks* marks = nullptr;
};

// Paints one whole frame of the map: clear, underlay, every visible line,
// then every visible label, the player's marker over them, then present. With noSelected, selected lines are
// left out (labels are drawn all the same).
void drawFrame(DrawingSurface& surface, const FrameSource& source, bool noSelected = false);

// How much of a frame drawMap draws.
struct MapPart {
    // Selected records in the selection colour; else drawn as if unselected.
    bool showSelection = true;
    bool noSelected = false;
    // Lines wholly outside this box of the surface, in twips, are left out,
    // as the surface would leave them; the drawing state at the end is the same.
    std::optional<QRectF> within;
};

// The underlay, the lines and the labels of a frame, without clearing or presenting.
void drawMap(DrawingSurface& surface, const FrameSource& source, const MapPart& part);

// The filters a record must pass to be drawn: the height filter (a line by
// its first end) and its layer's check box; lines and labels shown at all.
bool lineShown(const FrameSource& source, const MapLine& line);
bool labelShown(const FrameSource& source, const MapLabel& label);

// One record as a frame draws it, with the background of the frame.
void drawLine(DrawingSurface& surface, const FrameSource& source, const MapLine& line, ColorRGB background,
              bool showSelection);
void drawLabel(DrawingSurface& surface, const FrameSource& source, const MapLabel& label, ColorRGB background,
               bool showSelection);

// The last line and the last label a frame draws, by index; none when it draws none.
struct LastDrawn {
    std::optional<std::size_t> line;
    std::optional<std::size_t> label;
};
LastDrawn lastDrawn(const FrameSource& source);

// Leaves on the surface the pen, fill and font that a whole frame leaves:
// those of its last line and its last label, nothing else drawn.
void leaveFrameState(DrawingSurface& surface, const FrameSource& source, const LastDrawn& last);

// The outline of the selection rectangle: white on a black map, else black.
ColorRGB selectBoxColor(ColorRGB background);

} // namespace plotwell
