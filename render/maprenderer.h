#pragma once

namespace plotwell {

class Editor;

// Paints one whole frame of the map on the editor's drawing surface: clear,
// underlay, every visible line, then every visible label, then present.
// Returns at once while holdDrawing is set. With noSelected, selected lines
// are left out (labels are drawn all the same).
void drawLines(Editor& editor, bool noSelected = false);

} // namespace plotwell
