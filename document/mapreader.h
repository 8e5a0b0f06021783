#pragma once

#include "document/mapdocument.h"

#include <QString>

#include <cstdint>
#include <string>

class QIODevice;

namespace plotwell {

// How a read of map text ended.
struct ReadResult {
    bool opened = false;
    QString openError;           // why the file could not be opened
    std::size_t linesAdded = 0;  // L records appended
    std::size_t labelsAdded = 0; // P records appended
    // The text line (from 1) of the record that could not be converted, where
    // the read stopped; 0 when it read to the end.
    std::size_t stoppedAtLine = 0;
    std::string reason;
};

// Reads map text and appends its records to doc on the given layer, scaled by
// scale. A line ends at CR LF, a lone CR or a lone LF. Lines starting with
// "L " or "P " are records; every other line is skipped. The read stops at the
// first record that cannot be converted and keeps what came before it.
ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale);
ReadResult readMapFile(const QString& path, MapDocument& doc, std::int16_t layer, float scale);

} // namespace plotwell
