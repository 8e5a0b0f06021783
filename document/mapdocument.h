#pragma once

#include "document/maprecords.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plotwell {

// Why a record's field text could not be converted; empty when it could.
using RecordError = std::optional<std::string>;

// The records of all four layers, the file each layer belongs to, and the
// active layer. Records enter only through addLine and addLabel, which parse
// the field text of an L or P record; they keep the order of appending.
class MapDocument {
public:
    const std::vector<MapLine>& lines() const { return m_lines; }
    const std::vector<MapLabel>& labels() const { return m_labels; }
    // For changing records in place (selection, colour, scaled coordinates).
    std::vector<MapLine>& lines() { return m_lines; }
    std::vector<MapLabel>& labels() { return m_labels; }
    std::size_t lineCount() const { return m_lines.size(); }
    std::size_t labelCount() const { return m_labels.size(); }

    // Full path of each layer's file; empty when the layer has none yet.
    std::array<QString, kLayerCount> layerFile;
    std::int16_t activeLayer = 0;

    // Append one record from the text after its "L " or "P " prefix. A layer of
    // 0 means the active layer, and the caller's variable is given that layer.
    // The new points are scaled by scale. Nothing is appended on an error.
    RecordError addLine(std::string_view text, std::int16_t& layer, float scale);
    RecordError addLabel(std::string_view text, std::int16_t& layer, float scale);

    // Removes every line and then every label for which test(layer, selected)
    // holds; the others keep their order. True when anything was removed.
    bool removeRecordsWhere(const std::function<bool(std::int16_t layer, bool selected)>& test);

    // Drops the most recently appended line or label, if any.
    void removeLastLine();
    void removeLastLabel();

    // Removes every record of every layer (the file names stay).
    void clearRecords();

    // Room for this many more records, so that a large load grows once; the
    // system is asked to back the room for lines with large pages.
    void reserveMore(std::size_t lines, std::size_t labels);

private:
    std::vector<MapLine> m_lines;
    std::vector<MapLabel> m_labels;
};

// Leading and trailing blanks removed, every other blank replaced by "_".
std::string toLabelText(std::string_view s);

} // namespace plotwell
