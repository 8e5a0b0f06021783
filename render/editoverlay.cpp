#include "render/editoverlay.h"

#include <cmath>

namespace plotwell {
namespace {

constexpr int kRingSegments = 20;

// The selected records as they will lie once the drag ends: the same frame
// with the view shifted by the drag, which is how the moved points will be
// placed.
void drawDragged(DrawingSurface& surface, const FrameSource& source, const EditMarks& marks)
{
    View shifted = source.view;
    shifted.offsetX += marks.dx * shifted.currentScale;
    shifted.offsetY += marks.dy * shifted.currentScale;
    if (!std::isfinite(shifted.offsetX) || !std::isfinite(shifted.offsetY))
        return;
    FrameSource moved{source.doc, shifted, source.display, source.underlay};
    const ColorRGB background = surface.backColor();
    if (source.display.showLines) {
        for (const MapLine& line : source.doc.lines()) {
            if (line.selected && lineShown(source, line))
                drawLine(surface, moved, line, background, true);
        }
    }
    if (source.display.showLabels) {
        for (const MapLabel& label : source.doc.labels()) {
            if (label.selected && labelShown(source, label))
                drawLabel(surface, moved, label, background, true);
        }
    }
}

void drawRing(DrawingSurface& surface, const View& view, const MapPoint& at)
{
    MapPoint p = at;
    scalePoint(p, view.currentScale);
    const float cx = p.sx + view.offsetX;
    const float cy = p.sy + view.offsetY;
    if (!std::isfinite(cx) || !std::isfinite(cy))
        return;
    surface.setPenWidth(kSnapRingWidth);
    surface.setPenColor(kSnapRingColour);
    constexpr double kStep = 2 * 3.14159265358979323846 / kRingSegments;
    float px = cx + kSnapRingRadius;
    float py = cy;
    for (int i = 1; i <= kRingSegments; ++i) {
        const float nx = cx + kSnapRingRadius * float(std::cos(kStep * i));
        const float ny = cy + kSnapRingRadius * float(std::sin(kStep * i));
        surface.line(px, py, nx, ny);
        px = nx;
        py = ny;
    }
}

} // namespace

void drawEditMarks(DrawingSurface& surface, const FrameSource& source)
{
    const EditMarks* marks = source.marks;
    if (!marks || (!marks->dragging && !marks->ringShown))
        return;
    const ColorRGB pen = surface.penColor();
    const int width = surface.penWidth();
    if (marks->dragging && source.doc.hasSelection())
        drawDragged(surface, source, *marks);
    if (marks->ringShown)
        drawRing(surface, source.view, marks->ring);
    surface.setPenWidth(width);
    surface.setPenColor(pen);
}

} // namespace plotwell
