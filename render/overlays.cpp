#include "render/overlays.h"

#include "render/editoverlay.h"

namespace plotwell {

void drawSelectionOverlay(DrawingSurface& surface, const FrameSource& source)
{
    if (!source.doc.hasSelection())
        return;
    const ColorRGB background = surface.backColor();
    if (source.display.showLines) {
        for (const MapLine& line : source.doc.lines()) {
            if (line.selected && lineShown(source, line))
                drawLine(surface, source, line, background, true);
        }
    }
    if (source.display.showLabels) {
        for (const MapLabel& label : source.doc.labels()) {
            if (label.selected && labelShown(source, label))
                drawLabel(surface, source, label, background, true);
        }
    }
}

void drawOverlays(DrawingSurface& surface, const FrameSource& source)
{
    // While the selection is dragged it is shown where it will go; where it
    // stands now it shows in its own colours, as the picture has it.
    if (!source.marks || !source.marks->dragging)
        drawSelectionOverlay(surface, source);
    // It moves while the map stands still; it leaves the pen as it was.
    if (source.player)
        drawPlayerMarker(surface, source.view, *source.player);
    drawEditMarks(surface, source);
}

} // namespace plotwell
