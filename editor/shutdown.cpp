#include "editor/shutdown.h"

namespace plotwell {

void requestClose(ShellState& shell)
{
    shell.endTimerEnabled = true;
}

void endTimerTick(ShellState& shell)
{
    ++shell.closeCount;
    if (shell.closeCount == 1)
        shell.wheelHooked = false;
    if (shell.closeCount == 2)
        shell.ended = true;
}

} // namespace plotwell
