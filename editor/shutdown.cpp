#include "editor/shutdown.h"

#include "editor/editor.h"

namespace plotwell {

void requestClose(Editor& editor) { editor.shell.endTimerEnabled = true; }

void endTimerTick(Editor& editor)
{
    ++editor.shell.closeCount;
    if (editor.shell.closeCount == 1)
        editor.shell.wheelHooked = false;
    if (editor.shell.closeCount == 2)
        editor.shell.ended = true;
}

} // namespace plotwell
