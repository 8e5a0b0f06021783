#include "document/labelcommand.h"

#include "document/mapdocument.h"

namespace plotwell {

LabelFields labelFieldsOf(const MapDocument& doc, std::size_t index)
{
    const MapLabel& label = doc.labels()[index];
    return {label.text, label.size, label.pos.z};
}

LabelPropertiesCommand::LabelPropertiesCommand(const MapDocument& doc, std::size_t index, LabelFields fields)
    : m_index(index), m_before(labelFieldsOf(doc, index)), m_after(std::move(fields)),
      m_mask(1u << doc.labels()[index].layer)
{
}

bool LabelPropertiesCommand::fits(const MapDocument& doc, bool done) const
{
    return m_index < doc.labelCount() && labelFieldsOf(doc, m_index) == (done ? m_after : m_before);
}

void LabelPropertiesCommand::apply(MapDocument& doc, const LabelFields& fields, float scale) const
{
    MapPoint pos = doc.labels()[m_index].pos;
    pos.z = fields.z;
    doc.setLabelPos(m_index, pos, scale);
    doc.setLabelText(m_index, fields.text, fields.size);
}

} // namespace plotwell
