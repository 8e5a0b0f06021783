#pragma once

namespace plotwell {

class Editor;

// Centres the content and takes the largest scale, in steps of 0.5, at which
// it fits; pending events run once first, or during a load once its step is
// recorded. Releases a held frame.
void fitContentToScreen(Editor& editor);

// The map's key events; shift is the modifier mask (1 Shift, 2 Ctrl, 4 Alt).
// A key press updates the key flags, moves or zooms the view, deletes on
// Delete, lets the tools hear it (Escape closes a line chain) and redraws.
void mapKeyDown(Editor& editor, int keyCode, int shift);
void mapKeyUp(Editor& editor, int keyCode, int shift);

// One notch of the mouse wheel, forward for a positive delta: zooms about the
// pointer by 0.5 (0.01 with Shift), or with Z held steps the current Z by 10
// (1 with Shift). Pending events run once at the end. A step that leaves
// what a single can hold stops the wheel for the rest of the run.
void onMouseWheel(Editor& editor, int delta);

} // namespace plotwell
