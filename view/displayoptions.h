#pragma once

#include "document/maprecords.h"

#include <array>
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

    bool linesChecked = true; // chkLines
    bool labelsChecked = true; // chkLabels
    bool heightChecked = false; // chkHeight
    bool invertChecked = true; // chkInvert
    bool flashChecked = true; // chkFlash
    bool stereoChecked = false; // chkStereo
    // The layers' check boxes: a layer is shown while its box is checked.
    // At first only the base layer is.
    std::array<bool, kLayerCount> layerChecked{true, false, false, false};

    // The stereo sliders' values, read while each record is drawn.
    std::int16_t stereo = 30; // sldStereo, 0..100
    std::int16_t stereoZ = 40; // sldStereoZ, 0..100
    std::int16_t brightness = 0; // sldBrightness, 0..255
};

// The height filter: a record at height z is hidden only when the filter is
// on and its difference from the current Z, as a single, is strictly greater
// than the range.
bool outsideHeightRange(const DisplayOptions& options, float z, float currentZ);

} // namespace plotwell
