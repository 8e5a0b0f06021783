#pragma once

#include "document/mapdocument.h"

#include <QString>

#include <cstdint>
#include <string>

class QIODevice;

namespace plotwell {

// How a write of one layer ended: error is empty when every byte was written.
struct WriteResult {
    QString error;
    std::size_t bytes = 0;

    bool ok() const { return error.isEmpty(); }
};

// The map text of one layer: every L record of that layer in document order,
// then every P record, "," between fields, CR LF after each line.
std::string formatLayer(const MapDocument& doc, std::int16_t layer);

// Writes the layer's map text to an open device in large blocks.
WriteResult writeLayerRecords(QIODevice& device, const MapDocument& doc, std::int16_t layer);

// Writes the layer's map text to path through a temporary file that replaces
// the old one only when everything was written, so a failed or interrupted
// save never leaves a truncated or empty file where a good one was. The error
// gives the reason ("it is a folder, not a file", "Permission denied", ...);
// a pipe or a device is refused, since it cannot be replaced safely;
// when the writing itself failed, as on a full disk, it ends in "; the file
// was left as it was".
WriteResult writeLayerFile(const QString& path, const MapDocument& doc, std::int16_t layer);

} // namespace plotwell
