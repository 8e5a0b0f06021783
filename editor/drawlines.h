#pragma once

namespace plotwell {

class Editor;

// Paints one whole frame of the map on the editor's drawing surface, unless
// the frame is held; then nothing changes, not even the colour of the
// selection rectangle. With noSelected, selected lines are left out.
void drawLines(Editor& editor, bool noSelected = false);

} // namespace plotwell
