#pragma once

#include "document/colorrgb.h"

#include <array>

namespace plotwell {

constexpr int kPresetCount = 24;

struct PaletteState {
    ColorRGB activeColor;
    std::array<ColorRGB, kPresetCount> presetColors{};
};

} // namespace plotwell
