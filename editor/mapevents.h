#pragma once

#include "tools/tool.h"

#include <QString>

namespace plotwell {

class Editor;

// The map's mouse events and the tool palette, as the window hands them on:
// each reaches the tools through the editor's tool context. Buttons are 1
// left, 2 right, 4 middle (summed while moving); points are surface twips.
void mapMouseDown(Editor& editor, int button, SurfacePoint p);
void mapMouseMove(Editor& editor, int buttons, SurfacePoint p);
void mapMouseUp(Editor& editor);
// The second release of a double click with the button; the presses and
// releases before it were handed over as usual.
void mapDoubleClick(Editor& editor, int button, SurfacePoint p);
// An icon of the tool palette clicked.
void toolIconClicked(Editor& editor, ToolId tool);
// Enter and Escape in the Label tool's caption box.
void captionEntered(Editor& editor, const QString& text);
void captionCancelled(Editor& editor);

} // namespace plotwell
