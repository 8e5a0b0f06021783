#include "tools/navigationtools.h"

#include "editor/editor.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

namespace plotwell {
namespace {

// A click toggles what is under the pointer and clears the selection when it
// hits nothing; with Ctrl held it leaves the selection alone, so that a
// rectangle dragged then adds to it.
void clickSelect(Editor& editor, SurfacePoint p)
{
    if (editor.keys.ctrlKeyDown)
        return;
    if (!editor.selection.hitTestAt(editor.doc, editor.view, editor.display, p.x, p.y, editor.view.currentZ, true))
        editor.doc.clearSelection();
}

} // namespace

void PointerTool::press(Editor& editor, SurfacePoint p) { clickSelect(editor, p); }

void PointerTool::move(Editor& editor, int buttons, SurfacePoint p)
{
    // A drag selects along its path and deselects nothing.
    if (buttons == kLeftButton)
        editor.selection.hitTestAt(editor.doc, editor.view, editor.display, p.x, p.y, editor.view.currentZ, false);
}

void SelectTool::press(Editor& editor, SurfacePoint p) { clickSelect(editor, p); }

void SelectTool::move(Editor& editor, int buttons, SurfacePoint p)
{
    // The rectangle starts where the press was.
    if (buttons == kLeftButton)
        editor.selection.showSelectBox(editor.view.zoomAnchor, p);
}

void SelectTool::release(Editor& editor)
{
    SelectBox& box = editor.selection.box;
    if (!box.visible)
        return;
    editor.selection.selectInBox(editor.doc, editor.view, editor.display);
    box.visible = false;
}

void PanTool::press(Editor&, SurfacePoint p) { m_anchor = p; }

void PanTool::move(Editor& editor, int buttons, SurfacePoint p)
{
    if (buttons != kLeftButton)
        return;
    // The render loop shows the moved view.
    if (!adjustOffset(editor.view, p.x - m_anchor.x, p.y - m_anchor.y))
        return;
    m_anchor = p;
}

} // namespace plotwell
