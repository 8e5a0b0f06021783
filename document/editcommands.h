#pragma once

#include "document/colorrgb.h"
#include "document/history.h"
#include "document/layerhome.h"
#include "document/takenrecords.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace plotwell {

class MapDocument;

// A layer's home as it was before a step changed it.
struct HomeBefore {
    std::int16_t layer = 0;
    LayerHome home;
};

// Records taken out, then records appended, and layers given other files:
// a Line click, a freehand stroke or a label appends; deleting takes out;
// loading, closing all layers and recovering do all three. Undoing takes off
// what was appended and puts back what was taken out, each at its index.
class RecordsCommand : public EditCommand {
public:
    // removed: what the edit took out; from: where the arrays ended when the
    // edit began appending, the records after it being the ones it appended;
    // homes: the layers' homes before the edit, for those it changed.
    RecordsCommand(QString text, TakenRecords removed, const MapDocument& doc, AppendMark from,
                   std::vector<HomeBefore> homes = {});

    bool changesNothing() const;

    QString text() const override { return m_text; }
    void undo(MapDocument& doc, float scale) override;
    void redo(MapDocument& doc, float scale) override;
    bool fits(const MapDocument& doc, bool done) const override;
    unsigned layerMask() const override { return m_mask; }
    std::size_t bytes() const override;
    // Appends that follow straight on from this one's join it.
    bool mergeWith(EditCommand& next) override;

private:
    QString m_text;
    TakenRecords m_removed; // the records while the step is done
    AppendMark m_from; // where the appended records begin
    AppendMark m_added; // how many were appended
    TakenRecords m_appended; // the appended records while the step is undone
    std::vector<HomeBefore> m_homes; // the other homes of the layers
    unsigned m_mask = 0;
};

// The selected lines and labels given one colour. Drags along a colour strip
// join into one step while the selection stays the same.
class RecolorCommand : public EditCommand {
public:
    // The selected records and their colours now, to be given colour.
    RecolorCommand(const MapDocument& doc, ColorRGB colour);

    // True when some selected record takes another colour.
    bool changesAny() const { return m_changes; }

    QString text() const override { return QStringLiteral("Recolour"); }
    void undo(MapDocument& doc, float scale) override;
    void redo(MapDocument& doc, float scale) override;
    bool fits(const MapDocument& doc, bool done) const override;
    unsigned layerMask() const override { return m_mask; }
    std::size_t bytes() const override;
    bool mergeWith(EditCommand& next) override;

private:
    ColorRGB m_colour;
    std::vector<std::uint32_t> m_lines;
    std::vector<ColorRGB> m_lineColours;
    std::vector<std::uint32_t> m_labels;
    std::vector<ColorRGB> m_labelColours;
    unsigned m_mask = 0;
    bool m_changes = false;
};

} // namespace plotwell
