#include "tools/tooldispatch.h"

#include "editor/drawlines.h"
#include "editor/editor.h"
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
        break;
    }
    return m_crosshair;
}

void ToolDispatcher::choose(Editor& editor, ToolId id)
{
    // A change of tool leaves an open line chain, the caption box and the
    // selection alone.
    tool(m_current).deactivate(editor);
    m_current = id;
    editor.mapCursor = tool(id).cursor();
    editor.holdDrawing = false;
    drawLines(editor);
}

void ToolDispatcher::press(Editor& editor, int button, SurfacePoint p)
{
    m_crosshair.hideLines();
    if (button == kRightButton && m_current == ToolId::Crosshair) {
        m_crosshair.rightPress(editor);
        return;
    }
    // The right button pans in every other tool.
    const ToolId effective = button == kRightButton ? ToolId::Pan : m_current;
    if (button != kLeftButton && button != kRightButton)
        return;
    editor.view.zoomAnchor = p;
    tool(effective).press(editor, p);
}

void ToolDispatcher::move(Editor& editor, int buttons, SurfacePoint p)
{
    showLocation(editor.view, p.x, p.y);
    editor.view.lastMousePoint = p;
    if (m_current != ToolId::Crosshair)
        editor.holdDrawing = false;
    ToolId effective = m_current;
    if (buttons == kRightButton) {
        // A right drag pans, whatever the tool, with the move pointer while it lasts.
        effective = ToolId::Pan;
        buttons = kLeftButton;
        editor.holdDrawing = false;
        m_crosshair.hideLines();
        editor.mapCursor = MapCursor::Move;
    } else {
        editor.mapCursor = tool(m_current).cursor();
    }
    tool(effective).move(editor, buttons, p);
}

void ToolDispatcher::release(Editor& editor)
{
    // Whatever the tool and the button, a release ends what any tool has in
    // progress: the selection rectangle, then the freehand stroke.
    for (const ToolId id : kAllTools)
        tool(id).release(editor);
}

void ToolDispatcher::key(Editor& editor, int keyCode, int shift)
{
    for (const ToolId id : kAllTools)
        tool(id).key(editor, keyCode, shift);
}

} // namespace plotwell
