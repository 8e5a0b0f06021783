#include "editor/renderloop.h"

#include "editor/editor.h"
#include "render/colorrules.h"

namespace plotwell {

bool RenderLoop::tick(Editor& editor)
{
    // The flash step belongs after the events that followed the last frame.
    if (m_drawnOnce)
        advanceFlash(editor.display);
    const bool flashing = editor.display.flashChecked && editor.doc.hasSelection();
    // A held frame keeps a scrolled picture as it is.
    const bool settling = editor.picture.settling() && !editor.tools.state.holdDrawing;
    if (m_drawnOnce && !editor.frameDirty && !flashing && !settling)
        return false;
    editor.drawLines();
    editor.frameDirty = false;
    m_drawnOnce = true;
    return true;
}

} // namespace plotwell
