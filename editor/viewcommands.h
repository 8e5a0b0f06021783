#pragma once

namespace plotwell {

class Editor;

// Centres the content and takes the largest scale, in steps of 0.5, at which
// it fits; pending events run once first. Releases a held frame.
void fitContentToScreen(Editor& editor);

// The map's key events; shift is the modifier mask (1 Shift, 2 Ctrl, 4 Alt).
// A key press updates the key flags, moves or zooms the view, deletes on
// Delete, lets the tools hear it (Escape closes a line chain) and redraws.
void mapKeyDown(Editor& editor, int keyCode, int shift);
void mapKeyUp(Editor& editor, int keyCode, int shift);

} // namespace plotwell
