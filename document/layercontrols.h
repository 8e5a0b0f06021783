#pragma once

#include "document/colorrgb.h"
#include "document/maprecords.h"

#include <QString>

#include <array>
#include <cstdint>

namespace plotwell {

class Editor;

// The layer rows: a check box per layer whose value is the layer's visibility
// and whose caption its display name. The marker of the active layer is red.
struct LayerControls {
    std::array<bool, kLayerCount> checked{true, false, false, false};
    std::array<QString, kLayerCount> captions{defaultLayerName(0), defaultLayerName(1), defaultLayerName(2),
                                              defaultLayerName(3)};

    // "Base Layer", "Layer 1", "Layer 2", "Layer 3".
    static QString defaultLayerName(int layer);
};

// Makes a layer active: markers, its check box checked, a redraw.
void setActiveLayer(Editor& editor, std::int16_t layer);
// The user toggled a layer's check box (its new value is already set).
void layerCheckClicked(Editor& editor, int layer);
// Sets a check box's value as a program change; runs the click handler when it changes.
void setLayerChecked(Editor& editor, int layer, bool checked);
// The user clicked a layer's marker.
void activeMarkerClicked(Editor& editor, int layer);
// File > Close all layers.
void closeAllLayers(Editor& editor);

} // namespace plotwell

namespace plotwell {
// The colour of a layer's marker: red for the active layer, white for the others.
ColorRGB markerColor(const Editor& editor, int layer);
} // namespace plotwell
