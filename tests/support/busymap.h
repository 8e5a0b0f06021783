#pragma once

#include "editor/editor.h"
#include "tests/support/records.h"

#include <random>
#include <string>

namespace plotwell::test {

// A busy map: many colours in runs, records off the surface and across its
// edges, selected records, every layer.
inline void fillBusyMap(Editor& editor)
{
    std::mt19937 rng(11);
    std::uniform_real_distribution<float> coord(-40, 160), step(-8, 8), height(-300, 300);
    const ColorRGB palette[] = {{0, 0, 255}, {0, 160, 0}, kWhite, kRed, {200, 200, 0}, {90, 90, 90}};
    editor.display.layerChecked = {true, true, false, true};
    float x = 0, y = 0;
    for (int i = 0; i < 4000; ++i) {
        if (i % 25 == 0)
            x = coord(rng), y = coord(rng);
        const float x2 = x + step(rng), y2 = y + step(rng);
        const ColorRGB colour = palette[(i / 3 + rng() % 2) % 6];
        const bool selected = rng() % 20 == 0;
        const float z1 = height(rng), z2 = height(rng);
        editor.doc.setLineSelected(addTestLine(editor, x, y, z1, x2, y2, z2, colour, std::int16_t(rng() % 4)),
                                   selected);
        x = x2, y = y2;
    }
    addTestLine(editor, -1000, 50, 0, 1000, 60, 0, ColorRGB{0, 0, 255});
    for (int i = 0; i < 150; ++i) {
        const bool selected = rng() % 10 == 0;
        const float x = coord(rng), y = coord(rng), z = height(rng);
        const ColorRGB colour = palette[rng() % 6];
        const auto layer = std::int16_t(rng() % 4);
        editor.doc.setLabelSelected(addTestLabel(editor, x, y, z, colour, "Place_" + std::to_string(i), layer),
                                    selected);
    }
}

} // namespace plotwell::test
