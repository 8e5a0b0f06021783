#include "editor/windowlayout.h"

namespace plotwell {

void layoutWindow(View& view, ShellState& shell, DrawingSurface& surface, float outerWidth, float outerHeight)
{
    const float mapHeight = outerHeight - 930;
    if (mapHeight >= 0)
        view.mapHeight = mapHeight;
    shell.stuffLeft = outerWidth - 4095;
    shell.toolsLeft = shell.stuffLeft;
    const float mapWidth = shell.stuffLeft - 120;
    if (mapWidth >= 0)
        view.mapWidth = mapWidth;
    surface.resize(view.mapWidth, view.mapHeight);
}

} // namespace plotwell
