#pragma once

namespace plotwell {

class Editor;

// Lays the panels out for the window's outer size in twips: the map fills the
// left part, the tool and option frames stand at the right edge. A step that
// would give a negative size is skipped; the others still run.
void layoutWindow(Editor& editor, float outerWidth, float outerHeight);

} // namespace plotwell
