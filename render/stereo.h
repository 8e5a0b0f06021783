#pragma once

#include "document/colorrgb.h"
#include "document/maprecords.h"
#include "platform/drawingsurface.h"
#include "render/colorrules.h"

#include <cstdint>

namespace plotwell {

// The red/cyan anaglyph: every record is drawn in red at its place and in
// cyan shifted sideways, both as bright as the record is high.

// Brightness of both copies of a record at height z, 0..255.
std::int16_t stereoBrightness(const DisplayOptions& options, float z);
// Sideways shift of the cyan copy of a point at height z, in twips.
float stereoShift(const DisplayOptions& options, float z, float scale);

// Draws line record line, whose ends lie at s1 and s2 on the surface; colour
// is the one the frame chose (the selection colour when the line is selected).
void drawStereoLine(DrawingSurface& surface, const DisplayOptions& options, float scale, const MapLine& line,
                    const MapPoint& s1, const MapPoint& s2, ColorRGB colour);
// Draws label record label at s; colour counts only when the label is selected.
void drawStereoLabel(DrawingSurface& surface, const DisplayOptions& options, float scale, const MapLabel& label,
                     const MapPoint& s, ColorRGB colour);

} // namespace plotwell
