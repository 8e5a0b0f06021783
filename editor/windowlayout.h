#pragma once

#include "editor/shellstate.h"
#include "platform/drawingsurface.h"
#include "view/view.h"

namespace plotwell {

// Lays the panels out for the window's outer size in twips: the map fills the
// left part, the tool and option frames stand at the right edge, and the
// map's surface takes the map's size. A step that would give a negative size
// is skipped; the others still run.
void layoutWindow(View& view, ShellState& shell, DrawingSurface& surface, float outerWidth, float outerHeight);

} // namespace plotwell
