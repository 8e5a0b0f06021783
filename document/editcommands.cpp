#include "document/editcommands.h"

#include "document/mapdocument.h"

namespace plotwell {

RecordsCommand::RecordsCommand(QString text, TakenRecords removed, const MapDocument& doc, AppendMark from,
                               std::vector<HomeBefore> homes)
    : m_text(std::move(text)), m_removed(std::move(removed)),
      m_from(from), m_added{doc.lineCount() - from.lines, doc.labelCount() - from.labels}, m_homes(std::move(homes))
{
    m_mask = m_removed.layerMask();
    for (std::size_t i = from.lines; i < doc.lineCount(); ++i)
        m_mask |= 1u << doc.lines()[i].layer;
    for (std::size_t i = from.labels; i < doc.labelCount(); ++i)
        m_mask |= 1u << doc.labels()[i].layer;
    for (const HomeBefore& before : m_homes)
        m_mask |= 1u << before.layer;
}

bool RecordsCommand::changesNothing() const
{
    return m_removed.empty() && m_added.lines == 0 && m_added.labels == 0 && m_homes.empty();
}

void RecordsCommand::undo(MapDocument& doc, float scale)
{
    m_appended = doc.takeRecordsFrom(m_from.lines, m_from.labels);
    doc.putBack(m_removed, scale);
    for (HomeBefore& before : m_homes)
        std::swap(doc.homes[std::size_t(before.layer)], before.home);
}

void RecordsCommand::redo(MapDocument& doc, float scale)
{
    doc.takeRecordsAgain(m_removed);
    doc.putBack(m_appended, scale);
    m_appended = TakenRecords();
    for (HomeBefore& before : m_homes)
        std::swap(doc.homes[std::size_t(before.layer)], before.home);
}

bool RecordsCommand::fits(const MapDocument& doc, bool done) const
{
    // Done, the arrays end with what was appended; not done, they hold what
    // was taken out in place of it.
    const std::size_t lines = done ? m_added.lines : m_removed.lineIndices.size();
    const std::size_t labels = done ? m_added.labels : m_removed.labelIndices.size();
    return doc.lineCount() == m_from.lines + lines && doc.labelCount() == m_from.labels + labels;
}

std::size_t RecordsCommand::bytes() const
{
    std::size_t total =
        sizeof(*this) + m_removed.bytes() + m_appended.bytes() + m_homes.capacity() * sizeof(HomeBefore);
    for (const HomeBefore& before : m_homes)
        total += std::size_t(before.home.layerFile.capacity() + before.home.caption.capacity()) * sizeof(QChar);
    return total;
}

bool RecordsCommand::mergeWith(EditCommand& next)
{
    auto* more = dynamic_cast<RecordsCommand*>(&next);
    if (!more || more->m_text != m_text || !more->m_removed.empty() || !more->m_homes.empty()
        || more->m_from.lines != m_from.lines + m_added.lines || more->m_from.labels != m_from.labels + m_added.labels)
        return false;
    m_added.lines += more->m_added.lines;
    m_added.labels += more->m_added.labels;
    m_mask |= more->m_mask;
    return true;
}

RecolorCommand::RecolorCommand(const MapDocument& doc, ColorRGB colour) : m_colour(colour)
{
    const auto note = [&](const auto& records, std::vector<std::uint32_t>& at, std::vector<ColorRGB>& colours) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            const auto& record = records[i];
            if (!record.selected)
                continue;
            at.push_back(std::uint32_t(i));
            colours.push_back({record.r, record.g, record.b});
            m_mask |= 1u << record.layer;
            m_changes = m_changes || record.r != colour.r || record.g != colour.g || record.b != colour.b;
        }
    };
    note(doc.lines(), m_lines, m_lineColours);
    note(doc.labels(), m_labels, m_labelColours);
}

void RecolorCommand::undo(MapDocument& doc, float)
{
    for (std::size_t k = 0; k < m_lines.size(); ++k)
        doc.setLineColor(m_lines[k], m_lineColours[k]);
    for (std::size_t k = 0; k < m_labels.size(); ++k)
        doc.setLabelColor(m_labels[k], m_labelColours[k]);
}

void RecolorCommand::redo(MapDocument& doc, float)
{
    for (const std::uint32_t i : m_lines)
        doc.setLineColor(i, m_colour);
    for (const std::uint32_t i : m_labels)
        doc.setLabelColor(i, m_colour);
}

bool RecolorCommand::fits(const MapDocument& doc, bool) const
{
    return (m_lines.empty() || m_lines.back() < doc.lineCount())
        && (m_labels.empty() || m_labels.back() < doc.labelCount());
}

std::size_t RecolorCommand::bytes() const
{
    return sizeof(*this) + (m_lines.capacity() + m_labels.capacity()) * sizeof(std::uint32_t)
        + (m_lineColours.capacity() + m_labelColours.capacity()) * sizeof(ColorRGB);
}

bool RecolorCommand::mergeWith(EditCommand& next)
{
    // The same records, recoloured again: the step keeps their first colours.
    auto* again = dynamic_cast<RecolorCommand*>(&next);
    if (!again || again->m_lines != m_lines || again->m_labels != m_labels)
        return false;
    m_colour = again->m_colour;
    return true;
}

} // namespace plotwell
