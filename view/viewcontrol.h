#pragma once

#include "document/maprecords.h"

#include <QString>

namespace plotwell {

class Editor;

// The view's public operations: the scale with its caption and zoom marker,
// the offsets, the current Z and the location read-out.
void adjustOffset(Editor& editor, float x, float y);
float getCurrentScale(const Editor& editor);
// Clamps to [0.5, 100], rescales every point and moves the zoom marker.
void setCurrentScale(Editor& editor, float newScale);
float getCurrentZ(const Editor& editor);
void setCurrentZ(Editor& editor, float z);
// Sets the "Scale: " caption, then the scaled coordinates of every point.
void rescaleAll(Editor& editor);
// Scale 1 and offsets 0; the marker stays where it is.
void resetView(Editor& editor);
// Updates lblX, lblY, lblZ and lblLoc for a surface position.
void showLocation(Editor& editor, float x, float y);

// The scale rounded to 5 decimals, without trailing zeros, with the given separator.
QString scaleText(float scale, char decimalSeparator);

} // namespace plotwell
