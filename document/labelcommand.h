#pragma once

#include "document/history.h"

#include <cstdint>
#include <string>

namespace plotwell {

class MapDocument;

// What Label Properties changes of a label: its text as stored, its size
// code and its height.
struct LabelFields {
    std::string text;
    std::int16_t size = 1;
    float z = 0;

    bool operator==(const LabelFields& o) const { return text == o.text && size == o.size && z == o.z; }
    bool operator!=(const LabelFields& o) const { return !(*this == o); }
};

LabelFields labelFieldsOf(const MapDocument& doc, std::size_t index);

// One label given other fields; it keeps its index, place, layer, colour and
// selection.
class LabelPropertiesCommand : public EditCommand {
public:
    LabelPropertiesCommand(const MapDocument& doc, std::size_t index, LabelFields fields);

    bool changesAny() const { return m_before != m_after; }

    QString text() const override { return QStringLiteral("Label Properties"); }
    void undo(MapDocument& doc, float scale) override { apply(doc, m_before, scale); }
    void redo(MapDocument& doc, float scale) override { apply(doc, m_after, scale); }
    bool fits(const MapDocument& doc, bool done) const override;
    unsigned layerMask() const override { return m_mask; }
    std::size_t bytes() const override { return sizeof(*this) + m_before.text.capacity() + m_after.text.capacity(); }

private:
    void apply(MapDocument& doc, const LabelFields& fields, float scale) const;

    std::size_t m_index;
    LabelFields m_before;
    LabelFields m_after;
    unsigned m_mask;
};

} // namespace plotwell
