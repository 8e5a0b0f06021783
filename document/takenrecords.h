#pragma once

#include "document/maprecords.h"

#include <cstdint>
#include <vector>

namespace plotwell {

// Records taken out of the document with the indices they stood at, in
// ascending order, so that putting them back makes the arrays exactly what
// they were. An edit that removed records keeps them here while it stands;
// one that appended records keeps here what undoing it took off. After the
// records are put back, the indices stay, to take the same records again.
struct TakenRecords {
    std::vector<MapLine> lines;
    std::vector<std::uint32_t> lineIndices;
    std::vector<MapLabel> labels;
    std::vector<std::uint32_t> labelIndices;

    bool empty() const { return lineIndices.empty() && labelIndices.empty(); }
    // The memory held outside the struct, the labels' texts included.
    std::size_t bytes() const;
    // A bit (1 << layer) for each layer a record held here belongs to.
    unsigned layerMask() const;
};

} // namespace plotwell
