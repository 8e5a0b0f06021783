#include "editor/viewcommands.h"

#include "editor/editor.h"
#include "editor/edits.h"
#include "tools/deletion.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

#include <algorithm>
#include <cmath>

namespace plotwell {

void fitContentToScreen(Editor& editor)
{
    View& view = editor.view;
    centerContent(view, editor.doc);
    view.zoomAnchor = {view.mapWidth / 2, view.mapHeight / 2};
    letEventsRun(editor);
    setCurrentScale(view, editor.doc, fittingScale(view, editor.doc));
    editor.tools.state.holdDrawing = false;
}

void mapKeyDown(Editor& editor, int keyCode, int shift)
{
    keyFlagsDown(editor.keys, keyCode, shift);
    viewKeyDown(editor.view, editor.doc, keyCode, shift);
    const ToolContext context = editor.toolContext();
    if (keyCode == Key::Delete)
        deleteKey(context, shift);
    editor.tools.key(context, keyCode, shift);
    editor.drawLines();
}

void mapKeyUp(Editor& editor, int keyCode, int shift)
{
    keyFlagsUp(editor.keys, keyCode, shift);
}

void onMouseWheel(Editor& editor, int delta)
{
    if (!editor.shell.wheelHooked)
        return;
    View& view = editor.view;
    const int direction = delta > 0 ? 1 : delta < 0 ? -1 : 0;
    const bool shift = editor.keys.theShiftKeyIsDown;
    if (!editor.keys.zKey) {
        const float s = view.currentScale;
        const float next = s + float(direction) * (shift ? 0.01f : 0.5f);
        // The change setCurrentScale will really make, so the point under the pointer stays put.
        const float d = std::clamp(next, 0.5f, 100.0f) - s;
        const MapPoint a = toWorld(view, view.lastMousePoint);
        // A view a single cannot hold is a failure of the wheel: it lets go.
        if (!adjustOffset(view, -a.x * d, -a.y * d)) {
            editor.shell.wheelHooked = false;
            return;
        }
        setCurrentScale(view, editor.doc, next);
    } else {
        const float z = view.currentZ + float(direction) * (shift ? 1.0f : 10.0f);
        if (!std::isfinite(z)) {
            editor.shell.wheelHooked = false;
            return;
        }
        view.currentZ = z;
        view.readout.z = singleCaption(z);
        editor.drawLines();
    }
    editor.services.events.processEvents();
}

} // namespace plotwell
