#pragma once

#include <QString>

namespace plotwell {

class Editor;

// Loads a picture file as the underlay and shows it. The folder is
// remembered first; a file that is no readable picture changes nothing else.
bool loadUnderlay(Editor& editor, const QString& fileName);
// File > Open Underlay Image: the open dialog in the last picture folder,
// then loadUnderlay. A cancel or a failure ends it silently.
void openUnderlayFromMenu(Editor& editor);
// File > Close Underlay Image: clears the map's own picture, which nothing
// sets, so the underlay goes on being shown; "Off" hides it.
void closeUnderlay(Editor& editor);
// The buttons "On" (0), "Tracing Paper" (1) and "Off" (2).
void backgroundButtonClicked(Editor& editor, int index);

} // namespace plotwell
