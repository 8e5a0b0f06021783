#pragma once

namespace plotwell {

class Editor;

// A press on preset swatch index: the left button takes its colour as the
// active colour, the right or the middle one stores the active colour in it
// and saves the presets; other buttons (back, forward) change nothing. The
// map gets the keyboard focus back.
void swatchPressed(Editor& editor, int index, int button);
// The mouse moved over colour strip index (0 red, 1 green, 2 blue) at x
// twips; with the left button held it sets that channel.
void stripMouseMove(Editor& editor, int index, int buttons, float x);
// The mouse button was let go over a strip: a drag's recolouring ends.
void stripReleased(Editor& editor);
// A double click on a strip asks for the channel's exact value.
void stripDoubleClicked(Editor& editor, int index);
// A click on the background swatch: the map's background takes the active colour.
void backgroundSwatchClicked(Editor& editor);

} // namespace plotwell
