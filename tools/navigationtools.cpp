#include "tools/navigationtools.h"

#include "view/viewcontrol.h"
#include "view/zoom.h"

namespace plotwell {
namespace {

// A click toggles what is under the pointer and clears the selection when it
// hits nothing; with Ctrl held it leaves the selection alone, so that a
// rectangle dragged then adds to it.
void clickSelect(const ToolContext& context, SurfacePoint p)
{
    if (context.keys.ctrlKeyDown)
        return;
    if (!context.selection.hitTestAt(context.doc, context.view, context.display, p.x, p.y, context.view.currentZ, true))
        context.doc.clearSelection();
}

} // namespace

void PointerTool::press(const ToolContext& context, SurfacePoint p)
{
    clickSelect(context, p);
}

void PointerTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    // A drag selects along its path and deselects nothing.
    if (buttons == kLeftButton)
        context.selection.hitTestAt(context.doc, context.view, context.display, p.x, p.y, context.view.currentZ, false);
}

void SelectTool::press(const ToolContext& context, SurfacePoint p)
{
    clickSelect(context, p);
}

void SelectTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    // The rectangle starts where the press was.
    if (buttons == kLeftButton)
        context.selection.showSelectBox(context.view.zoomAnchor, p);
}

void SelectTool::release(const ToolContext& context)
{
    SelectBox& box = context.selection.box;
    if (!box.visible)
        return;
    context.selection.selectInBox(context.doc, context.view, context.display);
    box.visible = false;
}

void PanTool::press(const ToolContext&, SurfacePoint p)
{
    m_anchor = p;
}

void PanTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    if (buttons != kLeftButton)
        return;
    // The render loop shows the moved view.
    if (!adjustOffset(context.view, p.x - m_anchor.x, p.y - m_anchor.y))
        return;
    m_anchor = p;
}

} // namespace plotwell
