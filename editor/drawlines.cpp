#include "editor/drawlines.h"

#include "editor/editor.h"
#include "render/maprenderer.h"

namespace plotwell {

void drawLines(Editor& editor, bool noSelected)
{
    if (editor.holdDrawing)
        return;
    DrawingSurface& surface = editor.services.surface;
    editor.selection.box.border = selectBoxColor(surface.backColor());
    const FrameSource source{editor.doc, editor.view, editor.display, editor.layers.checked, editor.underlay,
                             &editor.follower.marker};
    drawFrame(surface, source, noSelected);
}

} // namespace plotwell
