#include "document/movecommand.h"

#include "document/mapdocument.h"
#include "document/numbertext.h"

#include <cmath>

namespace plotwell {

MoveCommand::MoveCommand(const MapDocument& doc, float dx, float dy, float dz) : m_dx(dx), m_dy(dy), m_dz(dz)
{
    const auto& lines = doc.lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].selected)
            continue;
        m_lines.push_back(std::uint32_t(i));
        m_lineBefore.push_back({lines[i].p1, lines[i].p2});
        m_lineAfter.push_back({moved(lines[i].p1), moved(lines[i].p2)});
        m_mask |= 1u << lines[i].layer;
    }
    const auto& labels = doc.labels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!labels[i].selected)
            continue;
        m_labels.push_back(std::uint32_t(i));
        m_labelBefore.push_back(labels[i].pos);
        m_labelAfter.push_back(moved(labels[i].pos));
        m_mask |= 1u << labels[i].layer;
    }
}

MapPoint MoveCommand::moved(const MapPoint& p)
{
    MapPoint to = p;
    // As the file will hold them, like every record made in the program.
    to.x = singleAsWritten(p.x + m_dx);
    to.y = singleAsWritten(p.y + m_dy);
    to.z = singleAsWritten(p.z + m_dz);
    m_moves = m_moves || to.x != p.x || to.y != p.y || to.z != p.z;
    m_finite = m_finite && std::isfinite(to.x) && std::isfinite(to.y) && std::isfinite(to.z);
    return to;
}

void MoveCommand::undo(MapDocument& doc, float scale)
{
    for (std::size_t k = 0; k < m_lines.size(); ++k)
        doc.setLineEnds(m_lines[k], m_lineBefore[k][0], m_lineBefore[k][1], scale);
    for (std::size_t k = 0; k < m_labels.size(); ++k)
        doc.setLabelPos(m_labels[k], m_labelBefore[k], scale);
}

void MoveCommand::redo(MapDocument& doc, float scale)
{
    for (std::size_t k = 0; k < m_lines.size(); ++k)
        doc.setLineEnds(m_lines[k], m_lineAfter[k][0], m_lineAfter[k][1], scale);
    for (std::size_t k = 0; k < m_labels.size(); ++k)
        doc.setLabelPos(m_labels[k], m_labelAfter[k], scale);
}

bool MoveCommand::fits(const MapDocument& doc, bool) const
{
    return (m_lines.empty() || m_lines.back() < doc.lineCount())
        && (m_labels.empty() || m_labels.back() < doc.labelCount());
}

std::size_t MoveCommand::bytes() const
{
    return sizeof(*this) + (m_lines.capacity() + m_labels.capacity()) * sizeof(std::uint32_t)
        + (m_lineBefore.capacity() + m_lineAfter.capacity()) * sizeof(Ends)
        + (m_labelBefore.capacity() + m_labelAfter.capacity()) * sizeof(MapPoint);
}

} // namespace plotwell
