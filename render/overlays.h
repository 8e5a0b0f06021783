#pragma once

#include "platform/drawingsurface.h"
#include "render/maprenderer.h"

namespace plotwell {

// What a frame draws over the kept picture of the map: what may change from
// one frame to the next while the picture stays as it is. Each overlay draws
// through the surface, which notes where, so that the next frame puts the
// picture back there first. A new overlay is one more call in drawOverlays.

// The selected records in their selection colour, lines and then labels,
// over everything else; the flash changes their colour every frame.
void drawSelectionOverlay(DrawingSurface& surface, const FrameSource& source);

// Every overlay, in the order they lie on top of each other: the selection,
// then the player's marker, then the edit marks.
void drawOverlays(DrawingSurface& surface, const FrameSource& source);

} // namespace plotwell
