#pragma once

#include "editor/shellstate.h"

namespace plotwell {

// The close box and "Exit" do not close at once: they start the shutdown
// timer. Its first tick removes the wheel hook, its second ends the program.
void requestClose(ShellState& shell);
void endTimerTick(ShellState& shell);

} // namespace plotwell
