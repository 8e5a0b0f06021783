#pragma once

#include <QString>

namespace plotwell {

class Editor;

// "2.2.0", from the build's version.
QString versionText();
// "Plotwell v2.2.0".
QString windowCaption();

// Sets every default in the order the program has always used, up to
// showing the window, the colour presets read from the settings last; the
// window then shows itself and calls finishStartUp.
void startUp(Editor& editor);
// What follows showing the window: the flash starts bright and falling.
void finishStartUp(Editor& editor);

} // namespace plotwell
