#pragma once

#include "document/colorrgb.h"

#include <cstdint>

namespace plotwell {

// The display options: which records a frame draws and in which colour.
// The *Checked members are the check boxes' values; the others mirror them
// or are set by prompts and the flash step.
struct DisplayOptions {
    bool showLines = true;
    bool showLabels = true;
    bool heightFilterOn = false;
    float heightRange = 100;
    std::int16_t flashLevel = 255;
    bool flashRising = false;

    bool linesChecked = true;   // chkLines
    bool labelsChecked = true;  // chkLabels
    bool heightChecked = false; // chkHeight
    bool invertChecked = true;  // chkInvert
    bool flashChecked = true;   // chkFlash
    bool stereoChecked = false; // chkStereo
};

} // namespace plotwell
