#include "editor/renderloop.h"

#include "editor/drawlines.h"
#include "editor/editor.h"
#include "render/displayoptions.h"

namespace plotwell {

void RenderLoop::tick(Editor& editor)
{
    // The flash step belongs after the events that followed the last frame.
    if (m_drawnOnce)
        advanceFlash(editor.display);
    drawLines(editor, false);
    m_drawnOnce = true;
}

} // namespace plotwell
