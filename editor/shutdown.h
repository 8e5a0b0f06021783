#pragma once

namespace plotwell {

class Editor;

// The close box and "Exit" do not close at once: they start the shutdown
// timer. Its first tick removes the wheel hook, its second ends the program.
void requestClose(Editor& editor);
void endTimerTick(Editor& editor);

} // namespace plotwell
