#include "editor/windowlayout.h"

#include "editor/editor.h"

namespace plotwell {

void layoutWindow(Editor& editor, float outerWidth, float outerHeight)
{
    const float mapHeight = outerHeight - 930;
    if (mapHeight >= 0)
        editor.view.mapHeight = mapHeight;
    editor.shell.stuffLeft = outerWidth - 4095;
    editor.shell.toolsLeft = editor.shell.stuffLeft;
    const float mapWidth = editor.shell.stuffLeft - 120;
    if (mapWidth >= 0)
        editor.view.mapWidth = mapWidth;
    editor.services.surface.resize(editor.view.mapWidth, editor.view.mapHeight);
}

} // namespace plotwell
