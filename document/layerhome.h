#pragma once

#include "document/filestamp.h"
#include "document/maprecords.h"

#include <QString>

#include <cstdint>

namespace plotwell {

// What Plotwell knows of one layer's file, all in one place: loading,
// saving, recovering, Close all layers and undoing any of them change it
// as a whole.
struct LayerHome {
    // Full path of the layer's file; empty while the layer has none.
    QString layerFile;
    // The layer's check box caption: its default name, or its file's name
    // once it has a file.
    QString caption;
    // The file as Plotwell last read or wrote it, and whether it was read
    // whole; saving over a file that changed or was read in part warns first.
    FileStamp stamp;
    // The edit history's state of the layer that the file holds: the layer
    // has unsaved edits while its state is another.
    std::uint64_t savedState = 0;

    // The home of a layer without a file.
    static LayerHome empty(int layer) { return {QString(), defaultLayerName(layer), FileStamp(), 0}; }

    // The same file, caption and stamp; the saved state aside.
    bool sameFileAs(const LayerHome& other) const
    {
        return layerFile == other.layerFile && caption == other.caption && stamp == other.stamp;
    }
};

} // namespace plotwell
