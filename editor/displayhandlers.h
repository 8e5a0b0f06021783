#pragma once

namespace plotwell {

class Editor;

// The display check boxes' click handlers, given the box's new value: the
// window, the soak and the tests all change the display through them.
void chkLinesClicked(Editor& editor, bool checked);
void chkLabelsClicked(Editor& editor, bool checked);
void chkHeightClicked(Editor& editor, bool checked);
void chkInvertClicked(Editor& editor, bool checked);
void chkFlashClicked(Editor& editor, bool checked);
// Switching the stereoscopic mode on hides the underlay and turns the map's
// background black (its swatch keeps its colour); nothing is redrawn, and
// switching it off changes nothing.
void chkStereoClicked(Editor& editor, bool checked);
// The underlay's "Maintain Aspect" box; the next frame shows it.
void chkAspectClicked(Editor& editor, bool checked);

// The stereo sliders: each frame reads their values, so a move only asks for one.
enum class StereoSlider { Separation, SeparationByHeight, Brightness };
void stereoSliderMoved(Editor& editor, StereoSlider slider, int value);

// A mouse button pressed on the height filter's check box: the right button
// asks for a new height range; the box's value does not change.
void chkHeightMouseDown(Editor& editor, int button);

} // namespace plotwell
