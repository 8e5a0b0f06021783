#pragma once

#include "document/mapdocument.h"

#include <cstdint>

namespace plotwell {

class Editor;

// True when any line or label belongs to the layer.
bool layerHasRecords(const MapDocument& doc, std::int16_t layer);

// Tells the user the layer needs a file and asks for one with the save
// dialog; the chosen name becomes the layer's file and its check box caption.
// False when the user cancels.
bool chooseLayerFile(Editor& editor, std::int16_t layer);

// Writes the layer's records to its file, replacing the old file only when
// the whole layer was written. A failure is reported in a message box naming
// the file and the reason.
void saveLayer(Editor& editor, std::int16_t layer);

// File > Save all layers: each layer with a file, or with records and a file
// named for it now, is written, layer 0 first. Nothing is redrawn.
void saveAllLayers(Editor& editor);

} // namespace plotwell
