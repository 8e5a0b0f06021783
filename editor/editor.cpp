#include "editor/editor.h"

#include "platform/imagesurface.h"
#include "platform/memoryhint.h"
#include "render/maprenderer.h"

namespace plotwell {

Editor::Editor(const Services& services) : services(services)
{
    doc.setFillAdvice(adviseLargeFill);
}

void Editor::drawLines(bool noSelected)
{
    if (tools.state.holdDrawing)
        return;
    DrawingSurface& surface = services.surface;
    selection.box.border = selectBoxColor(surface.backColor());
    const FrameSource source = frameSource();
    // A picture is kept only of an image, and only of frames that show
    // every record; other frames are drawn whole.
    auto* image = dynamic_cast<ImageSurface*>(&surface);
    if (image && !noSelected)
        picture.compose(*image, source);
    else
        drawFrame(surface, source, noSelected);
}

FrameSource Editor::frameSource() const
{
    return {doc, view, display, underlay, &follower.marker, &tools.state.marks};
}

ToolContext Editor::toolContext()
{
    return {doc,
            history,
            view,
            selection,
            display,
            keys,
            palette.activeColor,
            tools.state,
            services.surface,
            services.dialogs,
            services.clipboard,
            [this] { drawLines(); }};
}

} // namespace plotwell
