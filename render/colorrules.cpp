#include "render/colorrules.h"

namespace plotwell {

std::int16_t clampInt(std::int16_t value, std::int16_t low, std::int16_t high)
{
    if (value < low)
        value = low;
    if (value > high)
        value = high;
    return value;
}

ColorRGB invertIfNeeded(const DisplayOptions& options, ColorRGB colour, ColorRGB background)
{
    // The whole colour value is compared: one unit off in one channel is not a match.
    if (options.invertChecked && colour == background)
        return {std::uint8_t(255 - colour.r), std::uint8_t(255 - colour.g), std::uint8_t(255 - colour.b)};
    return colour;
}

ColorRGB flashColor(const DisplayOptions& options, ColorRGB colour)
{
    const std::int16_t level = options.flashChecked ? options.flashLevel : 255;
    if (colour == kRed) {
        // Red on red would not show the selection; this gives steady cyan.
        return {std::uint8_t(clampInt(std::int16_t(level - 255), 0, 255)),
                std::uint8_t(clampInt(std::int16_t(255 - colour.g), 0, 255)),
                std::uint8_t(clampInt(std::int16_t(255 - colour.b), 0, 255))};
    }
    return {std::uint8_t(level), 0, 0};
}

void advanceFlash(DisplayOptions& options)
{
    if (options.flashRising) {
        options.flashLevel = std::int16_t(options.flashLevel + 64);
        if (options.flashLevel > 255) {
            options.flashRising = false;
            options.flashLevel = 254;
        }
    } else {
        options.flashLevel = std::int16_t(options.flashLevel - 64);
        if (options.flashLevel < 0) {
            options.flashRising = true;
            options.flashLevel = 1;
        }
    }
}

} // namespace plotwell
