#pragma once

namespace plotwell {

class Editor;

// Mouse buttons as the map and the controls report them.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;

// The zoom strip's drag handler: x is the mouse x within the strip, in twips.
// Zooms about the zoom anchor to 0.5 at the left end and 100 at the right.
void zoomStripMouseMove(Editor& editor, int button, float x);
// The same handler driven from the marker's own position, as start-up and
// loading do to re-apply the zoom scale.
void reapplyZoomScale(Editor& editor);
// Puts the centre of the content's bounding box at the centre of the map, at scale 1.
void centerContent(Editor& editor);
// Centres the content and takes the largest scale, in steps of 0.5, at which it fits.
void fitContentToScreen(Editor& editor);

} // namespace plotwell
