#pragma once

#include "document/colorrgb.h"
#include "document/maprecords.h"
#include "platform/drawingsurface.h"
#include "view/view.h"

namespace plotwell {

// Where the player stands in the game, as the game's log last told it: a
// mark drawn over the map, never a record.
struct PlayerMarker {
    bool shown = false;
    MapPoint at; // world x, y, z; sx, sy unused

    // The mark must not be taken for a record (2-pixel lines, small filled
    // circles with text): a hollow ring with a cross through it, drawn in a
    // bright colour over a black outline, so that it stands out on any map
    // background, underlay or record colour. Its size is in pixels whatever
    // the scale.
    static constexpr ColorRGB kColour{255, 0, 255};
    static constexpr ColorRGB kOutline = kBlack;
    // The cross's four arms leave the centre open, so that the map at the
    // player's very place stays in sight.
    static constexpr float kRingRadius = 9 * 15; // twips
    static constexpr float kArmFrom = 4 * 15; // twips from the centre
    static constexpr float kArmTo = 15 * 15;
    static constexpr int kWidth = 3; // pixels
    static constexpr int kOutlineWidth = 5;
};

// The marker's centre on the surface, from its world point and the view.
SurfacePoint playerMarkerCentre(const View& view, const PlayerMarker& marker);

// Draws the marker over whatever the surface shows, when it is shown; the
// surface's pen is left as it was, so that what draws next (the rubber band)
// finds the pen the frame left.
void drawPlayerMarker(DrawingSurface& surface, const View& view, const PlayerMarker& marker);

} // namespace plotwell
