#include "tools/movetool.h"

#include "tools/editselection.h"
#include "tools/snapping.h"
#include "view/zoom.h"

#include <cmath>

namespace plotwell {

TakenPoint takePoint(const ToolContext& context, SurfacePoint p, bool skipSelected)
{
    if (context.state.snapToEnds) {
        if (const auto end = nearestLineEnd(context.doc, context.selection.lineIndex(), context.view, context.display,
                                            p, skipSelected))
            return {*end, true};
    }
    return {toWorld(context.view, p), false};
}

void showSnapRing(const ToolContext& context, SurfacePoint p, bool skipSelected)
{
    EditMarks& marks = context.state.marks;
    const TakenPoint taken = takePoint(context, p, skipSelected);
    marks.ringShown = taken.snapped;
    if (taken.snapped)
        marks.ring = taken.world;
}

void MoveTool::press(const ToolContext& context, SurfacePoint p)
{
    // Nothing moves until the pointer does; a press alone changes nothing.
    m_pressed = true;
    m_from = takePoint(context, p).world;
    context.state.marks.dragging = false;
}

void MoveTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    if (!m_pressed || buttons != kLeftButton)
        return;
    const MapPoint to = takePoint(context, p, true).world;
    float dx = to.x - m_from.x;
    float dy = to.y - m_from.y;
    if (context.keys.theShiftKeyIsDown) {
        if (std::fabs(dx) >= std::fabs(dy))
            dy = 0;
        else
            dx = 0;
    }
    EditMarks& marks = context.state.marks;
    marks.dragging = std::isfinite(dx) && std::isfinite(dy);
    marks.dx = marks.dragging ? dx : 0;
    marks.dy = marks.dragging ? dy : 0;
}

void MoveTool::release(const ToolContext& context)
{
    EditMarks& marks = context.state.marks;
    if (m_pressed && marks.dragging && (marks.dx != 0 || marks.dy != 0))
        moveSelection(context, marks.dx, marks.dy, 0);
    m_pressed = false;
    marks.dragging = false;
    marks.dx = marks.dy = 0;
}

void MoveTool::doubleClick(const ToolContext& context, SurfacePoint p)
{
    // The label under the pointer, as a click with the Pointer tool finds
    // labels: on the active layer, within the hit tolerance.
    if (!context.display.labelsChecked)
        return;
    const MapPoint at = toWorld(context.view, p);
    const auto& labels = context.doc.labels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const MapLabel& label = labels[i];
        if (label.layer == context.doc.activeLayer && std::fabs(double(label.pos.x) - at.x) < kHitTolerance
            && std::fabs(double(label.pos.y) - at.y) < kHitTolerance) {
            editLabelProperties(context, i);
            return;
        }
    }
}

void MoveTool::deactivate(const ToolContext& context)
{
    m_pressed = false;
    context.state.marks = EditMarks();
}

} // namespace plotwell
