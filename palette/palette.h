#pragma once

#include "document/colorrgb.h"
#include "platform/settingsstore.h"

#include <QString>

#include <array>

namespace plotwell {

constexpr int kPresetCount = 24;

// The active colour, the 24 preset swatches and the colour strips, with what
// their controls show.
struct Palette {
    ColorRGB activeColor;
    std::array<ColorRGB, kPresetCount> presetColors{};
    // What each swatch shows: a preset read from the settings may colour its
    // channels and its swatch differently (a part above 255 paints the
    // swatch but cannot be a channel).
    std::array<ColorRGB, kPresetCount> swatchColors{};
    // The captions of the red, green and blue strips.
    std::array<QString, 3> stripCaptions{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")};
    // What lblBkgColor shows: the map's background as last chosen from here.
    ColorRGB backgroundSwatch = kWhite;
};

// The strip's geometry: a drag across its width sets a channel from 0 to 255.
constexpr float kStripWidth = 1395; // twips

// Shows the active colour on the strips. (The window's swatch shows
// activeColor itself.) Giving it to the selection is an edit of the records,
// made as an undoable step by the palette's commands.
void showActiveColor(Palette& palette);

// A channel's value from the mouse x on its strip (in twips, any value): one
// of 101 positions, 0 at the left end and 255 at the right.
std::uint8_t stripValue(float x);

// The presets in the settings, section "colorPresets", keys "0" to "23",
// each "r,g,b". A missing key reads as "0,0,0"; a channel that is not a
// number in 0..255 is left as it was, and a swatch with a part that is
// missing, not a number or negative keeps its colour.
void loadColorPresets(Palette& palette, const SettingsStore& settings);
void saveColorPresets(const Palette& palette, SettingsStore& settings);

} // namespace plotwell
