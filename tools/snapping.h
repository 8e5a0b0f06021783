#pragma once

#include "document/mapdocument.h"
#include "tools/lineindex.h"
#include "view/displayoptions.h"
#include "view/view.h"

#include <optional>

namespace plotwell {

// The pointer snaps to a line end within 8 pixels of it, at every zoom level.
constexpr float kSnapRadius = 8 * 15; // twips

// The end nearest to the surface point p, of the lines a frame shows (lines
// shown, the layer's box checked, within the height filter), when one lies
// within kSnapRadius; its x, y, z are the end's own. With skipSelected, the
// ends of selected lines are passed over: they move with a drag.
std::optional<MapPoint> nearestLineEnd(const MapDocument& doc, LineIndex& index, const View& view,
                                       const DisplayOptions& display, SurfacePoint p, bool skipSelected = false);

// Where a point of the world stands on the surface, as records are placed.
SurfacePoint surfacePointOf(const View& view, const MapPoint& world);

} // namespace plotwell
