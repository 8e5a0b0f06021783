#pragma once

#include <cstdint>

namespace plotwell {

// The main window's own state: where its panels stand and the timed shutdown.
struct ShellState {
    float toolsLeft = 6840; // frmTools, twips
    float stuffLeft = 6840; // frmStuff, twips
    std::int16_t closeCount = 0;
    bool endTimerEnabled = false;
    bool wheelHooked = false;
    bool ended = false;
};

} // namespace plotwell
