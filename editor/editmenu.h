#pragma once

namespace plotwell {

class Editor;

// Edit > Move Selection...: moves the selection by a typed distance.
void moveSelectionFromMenu(Editor& editor);
// Edit > Label Properties..., while exactly one label is selected.
bool canEditLabelProperties(const Editor& editor);
void labelPropertiesFromMenu(Editor& editor);
// Edit > Snap to Line Ends, remembered in the settings.
void toggleSnapToLineEnds(Editor& editor);
// Reads the remembered Snap to Line Ends; off at first.
void loadEditSettings(Editor& editor);

} // namespace plotwell
