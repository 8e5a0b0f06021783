#include "tools/tooldispatch.h"

#include "view/viewcontrol.h"
#include "view/zoom.h"

namespace plotwell {

Tool& ToolDispatcher::tool(ToolId id)
{
    switch (id) {
        case ToolId::Pointer:
            return m_pointer;
        case ToolId::Pan:
            return m_pan;
        case ToolId::Select:
            return m_select;
        case ToolId::Line:
            return m_line;
        case ToolId::Freehand:
            return m_freehand;
        case ToolId::Label:
            return m_label;
        case ToolId::Crosshair:
            return m_crosshair;
        case ToolId::Move:
            break;
    }
    return m_move;
}

void ToolDispatcher::choose(const ToolContext& context, ToolId id)
{
    // A change of tool leaves an open line chain, the caption box and the
    // selection alone.
    tool(m_current).deactivate(context);
    m_current = id;
    context.state.mapCursor = tool(id).cursor();
    context.state.holdDrawing = false;
    context.state.marks.ringShown = false;
    context.drawFrame();
}

void ToolDispatcher::press(const ToolContext& context, int button, SurfacePoint p)
{
    m_crosshair.hideLines();
    if (button == kRightButton && m_current == ToolId::Crosshair) {
        m_crosshair.rightPress(context);
        return;
    }
    // The right button pans in every other tool.
    const ToolId effective = button == kRightButton ? ToolId::Pan : m_current;
    if (button != kLeftButton && button != kRightButton)
        return;
    context.view.zoomAnchor = p;
    tool(effective).press(context, p);
}

void ToolDispatcher::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    showLocation(context.view, p.x, p.y);
    context.view.lastMousePoint = p;
    if (m_current != ToolId::Crosshair)
        context.state.holdDrawing = false;
    ToolId effective = m_current;
    if (buttons == kRightButton) {
        // A right drag pans, whatever the tool, with the move pointer while it lasts.
        effective = ToolId::Pan;
        buttons = kLeftButton;
        context.state.holdDrawing = false;
        m_crosshair.hideLines();
        context.state.mapCursor = MapCursor::Move;
    } else {
        context.state.mapCursor = tool(m_current).cursor();
    }
    // The tools that take points show the end they would snap to; the Move
    // tool passes over the ends of the selection, which move with it.
    const bool takesPoints = effective == ToolId::Line || effective == ToolId::Freehand
        || effective == ToolId::Crosshair || effective == ToolId::Move;
    if (takesPoints && context.state.snapToEnds)
        showSnapRing(context, p, effective == ToolId::Move);
    else
        context.state.marks.ringShown = false;
    tool(effective).move(context, buttons, p);
}

void ToolDispatcher::doubleClick(const ToolContext& context, SurfacePoint p)
{
    tool(m_current).doubleClick(context, p);
}

void ToolDispatcher::release(const ToolContext& context)
{
    // Whatever the tool and the button, a release ends what any tool has in
    // progress: the selection rectangle, then the freehand stroke.
    for (const ToolId id : kAllTools)
        tool(id).release(context);
}

void ToolDispatcher::key(const ToolContext& context, int keyCode, int shift)
{
    for (const ToolId id : kAllTools)
        tool(id).key(context, keyCode, shift);
}

} // namespace plotwell
