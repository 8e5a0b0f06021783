#pragma once

#include "document/mapdocument.h"
#include "view/view.h"

#include <QString>

namespace plotwell {

// The view's public operations: the scale with its caption and zoom marker,
// the offsets, the current Z and the location read-out. The document's points
// carry their scaled coordinates, so a change of scale rescales them. No
// operation leaves a scale or an offset that is not a finite single: a step
// whose result would not be one leaves the view as it was and says so, and
// the handler that asked for it ends there.

// Moves the view by (x, y) twips; false, and nothing moved, when an offset
// would not be finite.
bool adjustOffset(View& view, float x, float y);
// Clamps to [0.5, 100], rescales every point and moves the zoom marker;
// false, and nothing changed, for a scale that is not a number.
bool setCurrentScale(View& view, MapDocument& doc, float newScale);
// Sets the "Scale: " caption, then the scaled coordinates of every point.
void rescaleAll(View& view, MapDocument& doc);
// Scale 1 and offsets 0; the marker stays where it is.
void resetView(View& view, MapDocument& doc);
// Updates lblX, lblY, lblZ and lblLoc for a surface position.
// The read-out for a world point, z from the current Z.
void showWorldLocation(View& view, const MapPoint& world);
void showLocation(View& view, float x, float y);

// The scale rounded to 5 decimals, without trailing zeros, with the given separator.
QString scaleText(float scale, char decimalSeparator);
// A single in the read-out's form (at most 7 significant digits, "." as the point).
QString singleCaption(float value);

} // namespace plotwell
