#pragma once

#include "platform/drawingsurface.h"
#include "render/underlaystate.h"

namespace plotwell {

// The underlay step of a frame, run right after the surface is cleared and
// only while the underlay is on: the picture, and the mesh over it when the
// tracing paper is on.
void paintUnderlay(DrawingSurface& surface, const UnderlayState& underlay);

} // namespace plotwell
