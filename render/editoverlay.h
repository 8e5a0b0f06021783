#pragma once

#include "platform/drawingsurface.h"
#include "render/maprenderer.h"

namespace plotwell {

// The size of the snap ring, in pixels whatever the scale.
constexpr float kSnapRingRadius = 6 * 15; // twips
constexpr int kSnapRingWidth = 2;
constexpr ColorRGB kSnapRingColour{255, 160, 0};

// Draws the source's edit marks, when it has any: the selected records
// moved by the drag, in their selection colour, then the snap ring. The
// surface's pen is left as it was.
void drawEditMarks(DrawingSurface& surface, const FrameSource& source);

} // namespace plotwell
