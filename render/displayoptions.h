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

    // The stereo sliders' values, read while each record is drawn.
    std::int16_t stereo = 30;    // sldStereo, 0..100
    std::int16_t stereoZ = 40;   // sldStereoZ, 0..100
    std::int16_t brightness = 0; // sldBrightness, 0..255
};

// The height filter: a record at height z is hidden only when the filter is
// on and its difference from the current Z, as a single, is strictly greater
// than the range.
bool outsideHeightRange(const DisplayOptions& options, float z, float currentZ);

// value raised to low if below it, then lowered to high if above it.
std::int16_t clampInt(std::int16_t value, std::int16_t low, std::int16_t high);

// The colour of a record that is not selected: with inversion checked, a
// colour equal to the background is shown inverted so that it stays visible.
ColorRGB invertIfNeeded(const DisplayOptions& options, ColorRGB colour, ColorRGB background);

// The colour of a selected record: red at the flash level (full red when
// flashing is unchecked); a pure red record is shown cyan instead.
ColorRGB flashColor(const DisplayOptions& options, ColorRGB colour);

// Moves the flash level one step, run once after every frame: down by 64 to
// below 0, then up by 64 to above 255, turning at 1 and 254.
void advanceFlash(DisplayOptions& options);

} // namespace plotwell
