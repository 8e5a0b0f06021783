#pragma once

namespace plotwell {

class Editor;

// The display check boxes' click handlers. The box's new value is already in
// the editor's display options when a handler runs.
void chkLinesClicked(Editor& editor);
void chkLabelsClicked(Editor& editor);
void chkHeightClicked(Editor& editor);
void chkInvertClicked(Editor& editor);
void chkFlashClicked(Editor& editor);
// Switching the stereoscopic mode on hides the underlay and turns the map's
// background black (its swatch keeps its colour); nothing is redrawn, and
// switching it off changes nothing.
void chkStereoClicked(Editor& editor);

// A mouse button pressed on the height filter's check box: the right button
// asks for a new height range; the box's value does not change.
void chkHeightMouseDown(Editor& editor, int button);

} // namespace plotwell
