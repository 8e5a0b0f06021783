#include "editor/drawlines.h"

#include "editor/editor.h"
#include "platform/imagesurface.h"
#include "render/maprenderer.h"

namespace plotwell {

void drawLines(Editor& editor, bool noSelected)
{
    if (editor.tools.state.holdDrawing)
        return;
    DrawingSurface& surface = editor.services.surface;
    editor.selection.box.border = selectBoxColor(surface.backColor());
    const FrameSource source{editor.doc, editor.view, editor.display, editor.underlay,
                             &editor.follower.marker};
    // A picture is kept only of an image, and only of frames that show
    // every record; other frames are drawn whole.
    auto* image = dynamic_cast<ImageSurface*>(&surface);
    if (image && !noSelected)
        editor.picture.compose(*image, source);
    else
        drawFrame(surface, source, noSelected);
}

} // namespace plotwell
