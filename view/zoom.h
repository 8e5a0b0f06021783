#pragma once

#include "document/mapdocument.h"
#include "view/view.h"

namespace plotwell {

// Mouse buttons as the map and the controls report them; a move reports the
// sum of the buttons held.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;

// The zoom strip's drag handler: x is the mouse x within the strip, in twips.
// Zooms about the zoom anchor to 0.5 at the left end and 100 at the right.
void zoomStripMouseMove(View& view, MapDocument& doc, int button, float x);
// The same handler driven from the marker's own position, as start-up and
// loading do to re-apply the zoom scale.
void reapplyZoomScale(View& view, MapDocument& doc);
// Puts the centre of the content's bounding box at the centre of the map, at scale 1.
void centerContent(View& view, MapDocument& doc);
// The scale the fit ends at from the present view: the largest in steps of
// 0.5 from the present scale at which all content lies on the surface, one
// step below the first that overflows. The offsets stay as they are.
float fittingScale(const View& view, const MapDocument& doc);

} // namespace plotwell
