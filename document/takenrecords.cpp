#include "document/takenrecords.h"

namespace plotwell {

std::size_t TakenRecords::bytes() const
{
    std::size_t total = lines.capacity() * sizeof(MapLine)
        + (lineIndices.capacity() + labelIndices.capacity()) * sizeof(std::uint32_t)
        + labels.capacity() * sizeof(MapLabel);
    for (const MapLabel& label : labels) {
        // Short texts live inside the record itself.
        if (label.text.capacity() > std::string().capacity())
            total += label.text.capacity() + 1;
    }
    return total;
}

unsigned TakenRecords::layerMask() const
{
    unsigned mask = 0;
    for (const MapLine& line : lines)
        mask |= 1u << line.layer;
    for (const MapLabel& label : labels)
        mask |= 1u << label.layer;
    return mask;
}

} // namespace plotwell
