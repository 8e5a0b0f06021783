#pragma once

#include "document/history.h"
#include "document/maprecords.h"

#include <array>
#include <cstdint>
#include <vector>

namespace plotwell {

class MapDocument;

// The selected lines (both ends) and labels moved by one distance in world
// units. Each record keeps its index, layer, colour and selection; undo puts
// back the very points it had, not points moved back, so that no rounding
// is left behind.
class MoveCommand : public EditCommand {
public:
    // The selected records of doc, to be moved by (dx, dy, dz).
    MoveCommand(const MapDocument& doc, float dx, float dy, float dz);

    // True when some record would move and every moved coordinate stays a
    // number a map file can hold.
    bool movesAny() const { return m_moves && m_finite; }

    QString text() const override { return QStringLiteral("Move"); }
    void undo(MapDocument& doc, float scale) override;
    void redo(MapDocument& doc, float scale) override;
    bool fits(const MapDocument& doc, bool done) const override;
    unsigned layerMask() const override { return m_mask; }
    std::size_t bytes() const override;

private:
    using Ends = std::array<MapPoint, 2>;
    MapPoint moved(const MapPoint& p);

    float m_dx, m_dy, m_dz;
    std::vector<std::uint32_t> m_lines;
    std::vector<Ends> m_lineBefore;
    std::vector<Ends> m_lineAfter;
    std::vector<std::uint32_t> m_labels;
    std::vector<MapPoint> m_labelBefore;
    std::vector<MapPoint> m_labelAfter;
    unsigned m_mask = 0;
    bool m_moves = false;
    bool m_finite = true;
};

} // namespace plotwell
