#include "render/maprenderer.h"

#include "shell/editor.h"

namespace plotwell {

void drawLines(Editor& editor, bool /*noSelected*/)
{
    if (editor.tools.holdDrawing)
        return;
    editor.services.surface.clear();
    editor.services.surface.refresh();
}

} // namespace plotwell
