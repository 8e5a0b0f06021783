#pragma once

#include "document/colorrgb.h"
#include "document/layerhome.h"
#include "document/maprecords.h"
#include "document/takenrecords.h"

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
// active layer. Records are read through const views; every change to them
// goes through the operations below, the document's one door for edits:
// appending a parsed record, removing, taking out and putting back (for the
// edit history), setting selection flags and colours, and rescaling.
// Records keep the order of appending.
class MapDocument {
public:
    const std::vector<MapLine>& lines() const { return m_lines; }
    const std::vector<MapLabel>& labels() const { return m_labels; }
    std::size_t lineCount() const { return m_lines.size(); }
    std::size_t labelCount() const { return m_labels.size(); }

    // Each layer's file, caption and saved state.
    std::array<LayerHome, kLayerCount> homes{LayerHome::empty(0), LayerHome::empty(1), LayerHome::empty(2),
                                             LayerHome::empty(3)};
    std::int16_t activeLayer = 0;

    // Append one record from the text after its "L " or "P " prefix. A layer of
    // 0 means the active layer, and the caller's variable is given that layer.
    // The new points are scaled by scale. Nothing is appended on an error. A
    // label's text ends at a comma or a line break: no record holds what a
    // map file could not read back.
    RecordError addLine(std::string_view text, std::int16_t& layer, float scale);
    RecordError addLabel(std::string_view text, std::int16_t& layer, float scale);

    // Drops every line and label beyond the first so many, as if they had
    // never been appended.
    void keepFirst(std::size_t lines, std::size_t labels);

    // Selection flags, by index into lines() or labels().
    void setLineSelected(std::size_t index, bool selected) { setFlag(m_lines[index].selected, selected); }
    void setLabelSelected(std::size_t index, bool selected) { setFlag(m_labels[index].selected, selected); }
    // Every line and label unselected.
    void clearSelection();
    // True while any line or label is selected.
    bool hasSelection() const { return m_selected > 0; }
    // How many lines and labels are selected, as the document keeps count.
    std::size_t selectedCount() const { return m_selected; }

    // Sets sx, sy of every point for a new scale.
    void rescale(float scale);

    // What undoing and redoing an edit needs: records are taken out with the
    // indices they stood at, every field kept, and put back exactly there.
    // Takes out every line and then every label for which test holds.
    TakenRecords takeRecordsWhere(const std::function<bool(std::int16_t layer, bool selected)>& test);
    // Takes out the lines from firstLine on and the labels from firstLabel on.
    TakenRecords takeRecordsFrom(std::size_t firstLine, std::size_t firstLabel);
    // Takes out again the records at the indices taken holds, into it.
    void takeRecordsAgain(TakenRecords& taken);
    // Puts each record back at its index, its points scaled by scale; taken
    // keeps only the indices. Indices that do not fit change nothing.
    void putBack(TakenRecords& taken, float scale);
    // One record's colour, by index into lines() or labels().
    void setLineColor(std::size_t index, ColorRGB colour);
    void setLabelColor(std::size_t index, ColorRGB colour);
    // Puts a line's ends or a label's anchor at other world points, with
    // their sx, sy for scale; the record keeps its index, layer, colour and
    // selection.
    void setLineEnds(std::size_t index, const MapPoint& p1, const MapPoint& p2, float scale);
    void setLabelPos(std::size_t index, const MapPoint& pos, float scale);
    // A label's text, as stored, and its size code.
    void setLabelText(std::size_t index, std::string text, std::int16_t size);

    // Counts the edits that removed records or put records back between
    // others. What is kept about records by index elsewhere stays valid
    // while it is unchanged: records are then only appended.
    std::uint64_t removals() const { return m_removals; }
    // Counts every edit of the records' contents: appending, removing,
    // putting back, recolouring and rescaling, but not selecting. What is
    // drawn or worked out from the records stays valid while it is unchanged.
    std::uint64_t revision() const { return m_revision; }
    // Counts the edits that put records' points elsewhere. What is worked
    // out from where the records lie stays valid while this and removals()
    // are unchanged.
    std::uint64_t placements() const { return m_placements; }

    // Room for this many more records, so that a large load grows once.
    void reserveMore(std::size_t lines, std::size_t labels);

    // Told of the room reserved for lines, which a load fills next from start
    // to end, so that the system may back it with large pages.
    using FillAdvice = void (*)(void* begin, std::size_t bytes);
    void setFillAdvice(FillAdvice advice) { m_fillAdvice = advice; }

private:
    void setFlag(bool& flag, bool selected)
    {
        m_selected += std::size_t(selected) - std::size_t(flag);
        flag = selected;
    }
    void countSelected();
    // Counts an edit that moved records between the arrays and elsewhere.
    void movedRecords(std::size_t selectedOut, std::size_t selectedIn);

    std::vector<MapLine> m_lines;
    std::vector<MapLabel> m_labels;
    std::uint64_t m_removals = 0;
    std::uint64_t m_revision = 0;
    std::uint64_t m_placements = 0;
    std::size_t m_selected = 0; // selected lines and labels
    FillAdvice m_fillAdvice = nullptr;
};

// Leading and trailing blanks removed, every other blank replaced by "_".
std::string toLabelText(std::string_view s);

} // namespace plotwell
