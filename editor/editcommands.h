#pragma once

#include "document/colorrgb.h"
#include "document/takenrecords.h"
#include "editor/filestamp.h"
#include "editor/history.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace plotwell {

class MapDocument;

// Which file a layer has: its path, its check box's caption, the file as it
// was last read or written, and the layer state that the file holds.
struct LayerFile {
    std::int16_t layer = 0;
    QString path;
    QString caption;
    FileStamp stamp;
    std::uint64_t savedState = 0;
};

LayerFile layerFileOf(Editor& editor, std::int16_t layer);
// Gives the layer the file held in other, and other the file the layer had.
void swapLayerFile(Editor& editor, LayerFile& other);
// The same path, caption and stamp.
bool sameFile(const LayerFile& a, const LayerFile& b);

// Where the record arrays end: what is appended after it is a step's own.
struct AppendMark {
    std::size_t lines = 0;
    std::size_t labels = 0;
};

// Records taken out, then records appended, and layers given other files:
// a Line click, a freehand stroke or a label appends; deleting takes out;
// loading, closing all layers and recovering do all three. Undoing takes off
// what was appended and puts back what was taken out, each at its index.
class RecordsCommand : public EditCommand {
public:
    // removed: what the edit took out; from: where the arrays ended when the
    // edit began appending, the records after it being the ones it appended;
    // files: the layers' files before the edit, for those it changed.
    RecordsCommand(QString text, TakenRecords removed, const MapDocument& doc, AppendMark from,
                   std::vector<LayerFile> files = {});

    bool changesNothing() const;

    QString text() const override { return m_text; }
    void undo(Editor& editor) override;
    void redo(Editor& editor) override;
    bool fits(const Editor& editor, bool done) const override;
    unsigned layerMask() const override { return m_mask; }
    std::size_t bytes() const override;
    // Appends that follow straight on from this one's join it.
    bool mergeWith(EditCommand& next) override;

private:
    QString m_text;
    TakenRecords m_removed;  // the records while the step is done
    AppendMark m_from;       // where the appended records begin
    AppendMark m_added;      // how many were appended
    TakenRecords m_appended; // the appended records while the step is undone
    std::vector<LayerFile> m_files; // the other files of the layers
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
    void undo(Editor& editor) override;
    void redo(Editor& editor) override;
    bool fits(const Editor& editor, bool done) const override;
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
