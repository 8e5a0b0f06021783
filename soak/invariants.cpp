#include "soak/invariants.h"

#include "document/mapwriter.h"
#include "document/numbertext.h"
#include "editor/editor.h"
#include "editor/maploading.h"
#include "soak/step.h"
#include "soak/world.h"

#include <QDir>

#include <cmath>

namespace plotwell::soak {
namespace {

std::string describe(const char* what, std::size_t index, const std::string& detail)
{
    return std::string(what) + " " + std::to_string(index) + ": " + detail;
}

std::optional<std::string> brokenPoint(const MapPoint& p, float scale)
{
    for (const float v : {p.x, p.y, p.z}) {
        if (!std::isfinite(v))
            return "a coordinate is " + singleToText(v);
    }
    // Derived values: inf is allowed where x * scale leaves the single range.
    if (p.sx != p.x * scale || p.sy != p.y * scale)
        return "scaled to " + singleToText(p.sx) + "," + singleToText(p.sy) + " instead of at scale "
            + singleToText(scale);
    return std::nullopt;
}

// The written form of a line or label, which is what must come back.
std::string written(const MapLine& l)
{
    std::string text;
    for (const float v : {l.p1.x, l.p1.y, l.p1.z, l.p2.x, l.p2.y, l.p2.z})
        text += singleToText(v) + ",";
    return text + std::to_string(l.r) + "," + std::to_string(l.g) + "," + std::to_string(l.b);
}

std::string written(const MapLabel& l)
{
    std::string text;
    for (const float v : {l.pos.x, l.pos.y, l.pos.z})
        text += singleToText(v) + ",";
    return text + std::to_string(l.r) + "," + std::to_string(l.g) + "," + std::to_string(l.b) + ","
        + std::to_string(l.size) + "," + shortText(QString::fromLatin1(l.text.data(), qsizetype(l.text.size())), 80);
}

template <typename Record> std::vector<std::string> layerRecords(const std::vector<Record>& records, std::int16_t layer)
{
    std::vector<std::string> out;
    for (const Record& r : records)
        if (r.layer == layer)
            out.push_back(written(r));
    return out;
}

// The whole text of each label of a layer, byte for byte.
std::vector<std::string> labelTexts(const MapDocument& doc, std::int16_t layer)
{
    std::vector<std::string> out;
    for (const MapLabel& l : doc.labels())
        if (l.layer == layer)
            out.push_back(l.text);
    return out;
}

std::optional<std::string> compare(const char* what, int layer, const std::vector<std::string>& before,
                                   const std::vector<std::string>& after)
{
    if (before == after)
        return std::nullopt;
    std::string detail = "layer " + std::to_string(layer) + " " + what + ": " + std::to_string(before.size())
        + " saved, " + std::to_string(after.size()) + " read back";
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        if (before[i] != after[i]) {
            detail += "; the first that differs, " + std::to_string(i) + ", was " + before[i] + " and is " + after[i];
            break;
        }
    }
    return detail;
}

} // namespace

std::optional<std::string> brokenInvariant(const Editor& editor)
{
    const View& view = editor.view;
    const std::pair<const char*, float> values[] = {{"scale", view.currentScale},
                                                    {"offsetX", view.offsetX},
                                                    {"offsetY", view.offsetY},
                                                    {"current Z", view.currentZ}};
    for (const auto& [name, v] : values) {
        if (!std::isfinite(v))
            return std::string("view: ") + name + " is " + singleToText(v);
    }
    if (!(view.currentScale > 0))
        return "view: scale is " + singleToText(view.currentScale);
    const PlayerMarker& marker = editor.follower.marker;
    if (marker.shown && !(std::isfinite(marker.at.x) && std::isfinite(marker.at.y) && std::isfinite(marker.at.z)))
        return "player's marker: at " + singleToText(marker.at.x) + "," + singleToText(marker.at.y) + ","
            + singleToText(marker.at.z);

    // The selection is shown dragged only while the Move tool drags it.
    const EditMarks& marks = editor.tools.state.marks;
    if (marks.dragging && !editor.tools.mover().dragging())
        return "move: the selection is shown dragged with no drag under way";
    if (marks.dragging && !(std::isfinite(marks.dx) && std::isfinite(marks.dy)))
        return "move: dragged by " + singleToText(marks.dx) + "," + singleToText(marks.dy);
    if (marks.ringShown && !(std::isfinite(marks.ring.x) && std::isfinite(marks.ring.y)))
        return "snap: the ring is at " + singleToText(marks.ring.x) + "," + singleToText(marks.ring.y);

    const MapDocument& doc = editor.doc;
    if (doc.activeLayer < 0 || doc.activeLayer >= kLayerCount)
        return "document: active layer " + std::to_string(doc.activeLayer);
    std::size_t flags = 0;
    for (std::size_t i = 0; i < doc.lineCount(); ++i) {
        const MapLine& line = doc.lines()[i];
        flags += line.selected ? 1 : 0;
        if (line.layer < 0 || line.layer >= kLayerCount)
            return describe("record: line", i, "on layer " + std::to_string(line.layer));
        for (const MapPoint* p : {&line.p1, &line.p2}) {
            if (auto broken = brokenPoint(*p, view.currentScale))
                return describe("record: line", i, *broken);
        }
    }
    for (std::size_t i = 0; i < doc.labelCount(); ++i) {
        const MapLabel& label = doc.labels()[i];
        flags += label.selected ? 1 : 0;
        if (label.layer < 0 || label.layer >= kLayerCount)
            return describe("record: label", i, "on layer " + std::to_string(label.layer));
        if (auto broken = brokenPoint(label.pos, view.currentScale))
            return describe("record: label", i, *broken);
        if (label.text.find_first_of("\r\n") != std::string::npos)
            return describe("record: label", i, "its text holds a line break");
    }
    if (flags != doc.selectedCount())
        return "selection: " + std::to_string(flags) + " records are selected, the document counts "
            + std::to_string(doc.selectedCount());
    return std::nullopt;
}

std::optional<std::string> roundTripFault(const Editor& editor, const QString& folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    Machine machine(QDir(folder).filePath(QStringLiteral("recovery")));
    World fresh(folder, machine);
    const MapDocument& doc = editor.doc;
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        const QString path = QDir(folder).filePath(QStringLiteral("layer%1.txt").arg(layer));
        const WriteResult written = writeLayerFile(path, doc, layer);
        if (!written.ok())
            return "round trip: layer " + std::to_string(layer)
                + " could not be written: " + written.error.toStdString();
        const ReadResult read = openMapFile(fresh.editor, QDir::toNativeSeparators(path), layer);
        if (!read.complete())
            return "round trip: layer " + std::to_string(layer) + " stopped at line "
                + std::to_string(read.stoppedAtLine) + ": " + read.reason;
    }
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        if (auto fault = compare("lines", layer, layerRecords(doc.lines(), layer),
                                 layerRecords(fresh.editor.doc.lines(), layer)))
            return "round trip: " + *fault;
        if (auto fault = compare("labels", layer, layerRecords(doc.labels(), layer),
                                 layerRecords(fresh.editor.doc.labels(), layer)))
            return "round trip: " + *fault;
        if (labelTexts(doc, layer) != labelTexts(fresh.editor.doc, layer))
            return "round trip: layer " + std::to_string(layer) + ": a label text came back otherwise";
    }
    return std::nullopt;
}

} // namespace plotwell::soak
