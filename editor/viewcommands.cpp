#include "editor/viewcommands.h"

#include "editor/drawlines.h"
#include "editor/editor.h"
#include "tools/deletion.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

namespace plotwell {

void fitContentToScreen(Editor& editor)
{
    View& view = editor.view;
    centerContent(view, editor.doc);
    view.zoomAnchor = {view.mapWidth / 2, view.mapHeight / 2};
    editor.services.events.processEvents();
    setCurrentScale(view, editor.doc, fittingScale(view, editor.doc));
    editor.holdDrawing = false;
}

void mapKeyDown(Editor& editor, int keyCode, int shift)
{
    keyFlagsDown(editor.keys, keyCode, shift);
    viewKeyDown(editor.view, editor.doc, keyCode, shift);
    if (keyCode == Key::Delete)
        deleteKey(editor, shift);
    editor.tools.key(editor, keyCode, shift);
    drawLines(editor);
}

void mapKeyUp(Editor& editor, int keyCode, int shift) { keyFlagsUp(editor.keys, keyCode, shift); }

} // namespace plotwell
