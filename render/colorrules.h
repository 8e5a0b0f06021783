#pragma once

#include "document/colorrgb.h"
#include "view/displayoptions.h"

#include <cstdint>

namespace plotwell {

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
