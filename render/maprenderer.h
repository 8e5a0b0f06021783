#pragma once

#include "document/colorrgb.h"
#include "document/mapdocument.h"
#include "platform/drawingsurface.h"
#include "render/displayoptions.h"
#include "render/playermarker.h"
#include "render/underlaystate.h"
#include "view/view.h"

#include <array>

namespace plotwell {

// What a frame is drawn from.
struct FrameSource {
    const MapDocument& doc;
    const View& view;
    const DisplayOptions& display;
    const std::array<bool, kLayerCount>& layerShown; // the layers' check boxes
    const UnderlayState& underlay;
    // Drawn over the map while the game's log is followed.
    const PlayerMarker* player = nullptr;
};

// Paints one whole frame of the map: clear, underlay, every visible line,
// then every visible label, the player's marker over them, then present. With noSelected, selected lines are
// left out (labels are drawn all the same).
void drawFrame(DrawingSurface& surface, const FrameSource& source, bool noSelected = false);

// The outline of the selection rectangle: white on a black map, else black.
ColorRGB selectBoxColor(ColorRGB background);

} // namespace plotwell
