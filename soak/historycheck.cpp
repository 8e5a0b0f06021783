#include "soak/historycheck.h"

#include "editor/edits.h"

#include "document/mapwriter.h"
#include "editor/editor.h"
#include "soak/invariants.h"
#include "soak/step.h"

#include <cstring>
#include <vector>

namespace plotwell::soak {
namespace {

std::uint64_t mix(std::uint64_t h, std::uint64_t v)
{
    h = (h ^ v) * 0x9e3779b97f4a7c15ULL;
    return h ^ (h >> 29);
}

std::uint64_t bitsOf(float v)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

std::uint64_t mixPoint(std::uint64_t h, const MapPoint& p)
{
    return mix(mix(mix(h, bitsOf(p.x)), bitsOf(p.y)), bitsOf(p.z));
}

std::uint64_t colourOf(std::uint8_t r, std::uint8_t g, std::uint8_t b)
{
    return std::uint64_t(r) << 16 | g << 8 | b;
}

// A number for everything of each layer's records that saving writes, in
// their order: equal records give equal numbers, and others, as good as
// always, other numbers. Far quicker than writing the text.
std::array<std::uint64_t, kLayerCount> fingerprints(const MapDocument& doc)
{
    std::array<std::uint64_t, kLayerCount> lines{};
    std::array<std::uint64_t, kLayerCount> labels{};
    for (const MapLine& l : doc.lines()) {
        if (l.layer < 0 || l.layer >= kLayerCount)
            continue;
        std::uint64_t& h = lines[std::size_t(l.layer)];
        h = mix(mixPoint(mixPoint(h, l.p1), l.p2), colourOf(l.r, l.g, l.b));
    }
    for (const MapLabel& l : doc.labels()) {
        if (l.layer < 0 || l.layer >= kLayerCount)
            continue;
        std::uint64_t& h = labels[std::size_t(l.layer)];
        h = mix(mix(mixPoint(h, l.pos), colourOf(l.r, l.g, l.b) << 16 | std::uint16_t(l.size)), l.text.size());
        for (const char c : l.text)
            h = mix(h, std::uint8_t(c));
    }
    std::array<std::uint64_t, kLayerCount> both{};
    for (std::size_t n = 0; n < both.size(); ++n)
        both[n] = mix(lines[n], labels[n]);
    return both;
}

// What undoing and redoing everything must give back.
struct Snapshot {
    std::array<std::string, kLayerCount> texts;
    std::array<QString, kLayerCount> files;
    std::array<QString, kLayerCount> captions;
    std::array<bool, kLayerCount> modified{};
    std::vector<bool> linesSelected;
    std::vector<bool> labelsSelected;
    std::size_t done = 0;
    std::size_t steps = 0;
    QString undoText;
    QString redoText;
};

Snapshot snapshot(const Editor& editor)
{
    Snapshot s;
    for (std::int16_t n = 0; n < kLayerCount; ++n) {
        const auto i = std::size_t(n);
        s.texts[i] = formatLayer(editor.doc, n);
        s.files[i] = editor.doc.homes[i].layerFile;
        s.captions[i] = editor.doc.homes[i].caption;
        s.modified[i] = editor.history.layerModified(n);
    }
    for (const MapLine& l : editor.doc.lines())
        s.linesSelected.push_back(l.selected);
    for (const MapLabel& l : editor.doc.labels())
        s.labelsSelected.push_back(l.selected);
    s.done = editor.history.doneCount();
    s.steps = editor.history.stepCount();
    s.undoText = editor.history.undoText();
    s.redoText = editor.history.redoText();
    return s;
}

// The first line where two texts differ, shortened for a message.
std::string firstDifference(const std::string& a, const std::string& b)
{
    std::size_t at = 0;
    while (at < a.size() && at < b.size() && a[at] == b[at])
        ++at;
    const std::size_t start = a.rfind('\n', at == 0 ? 0 : at - 1);
    const std::size_t from = start == std::string::npos ? 0 : start + 1;
    const auto line = [from](const std::string& text) {
        const std::string rest = text.substr(std::min(from, text.size()), 80);
        return shortText(QString::fromLatin1(rest.substr(0, rest.find('\r')).c_str()));
    };
    return "line at byte " + std::to_string(from) + " was " + line(a) + " and is " + line(b);
}

std::optional<std::string> difference(const Snapshot& before, const Snapshot& after)
{
    for (std::size_t n = 0; n < std::size_t(kLayerCount); ++n) {
        const std::string layer = "layer " + std::to_string(n);
        if (before.texts[n] != after.texts[n])
            return layer + " saves otherwise: " + std::to_string(before.texts[n].size()) + " bytes before, "
                + std::to_string(after.texts[n].size()) + " after; the first "
                + firstDifference(before.texts[n], after.texts[n]);
        if (before.files[n] != after.files[n] || before.captions[n] != after.captions[n])
            return layer + " had the file " + shortText(before.files[n]) + " (" + shortText(before.captions[n])
                + ") and has " + shortText(after.files[n]) + " (" + shortText(after.captions[n]) + ")";
        if (before.modified[n] != after.modified[n])
            return layer
                + std::string(before.modified[n] ? " had unsaved edits and has none"
                                                 : " had no unsaved edits and has some");
    }
    if (before.linesSelected != after.linesSelected || before.labelsSelected != after.labelsSelected)
        return std::string("other records are selected");
    if (before.done != after.done || before.steps != after.steps || before.undoText != after.undoText
        || before.redoText != after.redoText)
        return "the history held " + std::to_string(before.done) + " of " + std::to_string(before.steps)
            + " steps done (" + shortText(before.undoText) + ", " + shortText(before.redoText) + ") and holds "
            + std::to_string(after.done) + " of " + std::to_string(after.steps) + " (" + shortText(after.undoText)
            + ", " + shortText(after.redoText) + ")";
    return std::nullopt;
}

} // namespace

std::optional<std::string> HistoryWatch::check(const Editor& editor)
{
    const EditHistory& history = editor.history;
    std::array<std::uint64_t, kLayerCount> states{};
    for (int n = 0; n < kLayerCount; ++n)
        states[std::size_t(n)] = history.layerState(n);
    // Records change only with the document's revision.
    if (editor.doc.revision() == m_revision && states == m_states)
        return std::nullopt;
    m_revision = editor.doc.revision();
    m_states = states;
    const auto prints = fingerprints(editor.doc);
    for (int n = 0; n < kLayerCount; ++n) {
        const auto [seen, fresh] = m_seen.emplace(std::make_pair(n, states[std::size_t(n)]), prints[std::size_t(n)]);
        if (!fresh && seen->second != prints[std::size_t(n)])
            return "history: layer " + std::to_string(n) + " holds other records than it did before in the same state "
                + std::to_string(states[std::size_t(n)]) + " (" + shortText(history.undoText()) + ", "
                + shortText(history.redoText()) + ")";
    }
    return std::nullopt;
}

std::optional<std::string> undoRedoFault(Editor& editor, HistoryWatch& watch)
{
    EditHistory& history = editor.history;
    const Snapshot before = snapshot(editor);
    const auto checked = [&](const char* what) -> std::optional<std::string> {
        if (auto broken = brokenInvariant(editor))
            return std::string("undo: after ") + what + ", " + *broken;
        if (auto fault = watch.check(editor))
            return std::string("undo: after ") + what + ", " + *fault;
        return std::nullopt;
    };
    // Undoing a step the document no longer fits forgets the history, which
    // an edit past the history would cause.
    const auto lost = [&](const char* what) {
        return std::string("undo: ") + what + " left " + std::to_string(history.doneCount()) + " of "
            + std::to_string(history.stepCount()) + " steps done, of " + std::to_string(before.done) + " of "
            + std::to_string(before.steps);
    };
    while (history.canUndo()) {
        undoEdit(editor);
        if (auto fault = checked("undoing"))
            return fault;
    }
    if (history.doneCount() != 0 || history.stepCount() != before.steps)
        return lost("undoing everything");
    while (history.canRedo()) {
        redoEdit(editor);
        if (auto fault = checked("redoing"))
            return fault;
    }
    if (history.doneCount() != before.steps)
        return lost("redoing everything");
    while (history.doneCount() > before.done && history.canUndo()) {
        undoEdit(editor);
        if (auto fault = checked("undoing"))
            return fault;
    }
    if (auto fault = difference(before, snapshot(editor)))
        return "undo: after undoing and redoing everything, " + *fault;
    return std::nullopt;
}

} // namespace plotwell::soak
