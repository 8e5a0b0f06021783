#pragma once

#include "document/colorrgb.h"

#include <cstdint>

namespace plotwell {

class Editor;

// Makes a layer active: markers, its check box checked, a redraw.
void setActiveLayer(Editor& editor, std::int16_t layer);
// The user toggled a layer's check box (its new value is already set).
void layerCheckClicked(Editor& editor, int layer, bool checked);
// Sets a check box's value as a program change; runs the click handler when it changes.
void setLayerChecked(Editor& editor, int layer, bool checked);
// The user clicked a layer's marker.
void activeMarkerClicked(Editor& editor, int layer);
// File > Close all layers.
void closeAllLayers(Editor& editor);
// The colour of a layer's marker: red for the active layer, white for the others.
ColorRGB markerColor(const Editor& editor, int layer);

} // namespace plotwell
