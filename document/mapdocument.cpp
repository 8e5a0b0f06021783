#include "document/mapdocument.h"

#include "document/recordfields.h"
#include "document/recordmoves.h"

#include <algorithm>
#include <stdexcept>

namespace plotwell {
namespace {

const char* const kFieldNames[] = {"first", "second",  "third",  "fourth", "fifth",
                                   "sixth", "seventh", "eighth", "ninth"};

std::string badField(int index, const char* what)
{
    return std::string(kFieldNames[index]) + " field is " + what;
}

// Fills targets from the next fields in turn with convert; the reason when a
// field is missing or does not convert. first is the number of the first
// field taken, for the reason.
template <typename T, std::size_t N, typename Convert>
RecordError readFields(RecordFields& fields, T* const (&targets)[N], int first, Convert convert, const char* missing,
                       const char* what)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (fields.done())
            return std::string(missing);
        const auto v = convert(fields);
        if (!v)
            return badField(first + int(i), what);
        *targets[i] = *v;
    }
    return std::nullopt;
}

constexpr auto kSingle = [](RecordFields& f) { return f.single(); };
constexpr auto kByte = [](RecordFields& f) { return f.byte(); };
constexpr auto kInt16 = [](RecordFields& f) { return f.int16(); };
const char* const kNotSingle = "not a single-precision number";
const char* const kNotColour = "not a colour value 0..255";
const char* const kNotSize = "not a size in -32768..32767";

} // namespace

RecordError MapDocument::addLine(std::string_view text, std::int16_t& layer, float scale)
{
    // 0 means the active layer, and the caller learns which one that was,
    // even when the fields then turn out to be bad.
    if (layer == 0)
        layer = activeLayer;
    const char* const missing = "fewer than nine fields";
    RecordFields fields(text);
    MapLine line;
    float* const coordinates[] = {&line.p1.x, &line.p1.y, &line.p1.z, &line.p2.x, &line.p2.y, &line.p2.z};
    std::uint8_t* const colour[] = {&line.r, &line.g, &line.b};
    if (auto error = readFields(fields, coordinates, 0, kSingle, missing, kNotSingle))
        return error;
    if (auto error = readFields(fields, colour, 6, kByte, missing, kNotColour))
        return error;
    // Fields beyond the ninth are ignored.
    line.layer = layer;
    scalePoint(line.p1, scale);
    scalePoint(line.p2, scale);
    m_lines.push_back(line);
    ++m_revision;
    return std::nullopt;
}

RecordError MapDocument::addLabel(std::string_view text, std::int16_t& layer, float scale)
{
    if (layer == 0)
        layer = activeLayer;
    const char* const missing = "fewer than eight fields";
    RecordFields fields(text);
    MapLabel label;
    float* const coordinates[] = {&label.pos.x, &label.pos.y, &label.pos.z};
    std::uint8_t* const colour[] = {&label.r, &label.g, &label.b};
    std::int16_t* const size[] = {&label.size};
    if (auto error = readFields(fields, coordinates, 0, kSingle, missing, kNotSingle))
        return error;
    if (auto error = readFields(fields, colour, 3, kByte, missing, kNotColour))
        return error;
    if (auto error = readFields(fields, size, 6, kInt16, missing, kNotSize))
        return error;
    if (fields.done())
        return std::string(missing);
    // The text ends at the next comma, and at a line break, which would end
    // the record in the file; whatever follows is dropped.
    const std::string_view field = fields.text();
    label.text = toLabelText(field.substr(0, field.find_first_of("\r\n")));
    label.layer = layer;
    scalePoint(label.pos, scale);
    m_labels.push_back(std::move(label));
    ++m_revision;
    return std::nullopt;
}

void MapDocument::countSelected()
{
    m_selected = 0;
    for (const MapLine& line : m_lines)
        m_selected += line.selected ? 1 : 0;
    for (const MapLabel& label : m_labels)
        m_selected += label.selected ? 1 : 0;
}

void MapDocument::keepFirst(std::size_t lines, std::size_t labels)
{
    if (lines >= m_lines.size() && labels >= m_labels.size())
        return;
    if (lines < m_lines.size())
        m_lines.erase(m_lines.begin() + std::ptrdiff_t(lines), m_lines.end());
    if (labels < m_labels.size())
        m_labels.erase(m_labels.begin() + std::ptrdiff_t(labels), m_labels.end());
    ++m_removals;
    ++m_revision;
    countSelected();
}

void MapDocument::clearSelection()
{
    for (MapLine& line : m_lines)
        line.selected = false;
    for (MapLabel& label : m_labels)
        label.selected = false;
    m_selected = 0;
}

void MapDocument::rescale(float scale)
{
    for (MapLine& line : m_lines) {
        scalePoint(line.p1, scale);
        scalePoint(line.p2, scale);
    }
    for (MapLabel& label : m_labels)
        scalePoint(label.pos, scale);
    ++m_revision;
}

TakenRecords MapDocument::takeRecordsWhere(const std::function<bool(std::int16_t, bool)>& test)
{
    TakenRecords taken;
    const auto passes = [&test](const auto& record) { return test(record.layer, record.selected); };
    std::size_t selected = moves::takeWhere(m_lines, passes, taken.lines, taken.lineIndices);
    selected += moves::takeWhere(m_labels, passes, taken.labels, taken.labelIndices);
    if (!taken.empty())
        movedRecords(selected, 0);
    return taken;
}

TakenRecords MapDocument::takeRecordsFrom(std::size_t firstLine, std::size_t firstLabel)
{
    TakenRecords taken;
    const auto indicesFrom = [](std::size_t first, std::size_t end, std::vector<std::uint32_t>& at) {
        if (first < end) {
            at.reserve(end - first);
            for (std::size_t i = first; i < end; ++i)
                at.push_back(std::uint32_t(i));
        }
    };
    indicesFrom(firstLine, m_lines.size(), taken.lineIndices);
    indicesFrom(firstLabel, m_labels.size(), taken.labelIndices);
    if (taken.empty())
        return taken;
    if (firstLine == 0 && firstLabel == 0) {
        // Everything: the arrays themselves change hands.
        taken.lines.swap(m_lines);
        taken.labels.swap(m_labels);
        movedRecords(m_selected, 0);
        return taken;
    }
    takeRecordsAgain(taken);
    return taken;
}

void MapDocument::takeRecordsAgain(TakenRecords& taken)
{
    if (taken.empty())
        return;
    std::size_t selected = moves::takeAt(m_lines, taken.lineIndices, taken.lines);
    selected += moves::takeAt(m_labels, taken.labelIndices, taken.labels);
    movedRecords(selected, 0);
}

namespace {

// The records fit back when there is one per index and the last index lies
// within the arrays they make together.
template <typename Record>
bool fitsBack(const std::vector<Record>& into, const std::vector<Record>& records, const std::vector<std::uint32_t>& at)
{
    return records.size() == at.size() && (at.empty() || at.back() < into.size() + records.size());
}

} // namespace

void MapDocument::putBack(TakenRecords& taken, float scale)
{
    if (taken.empty() || !fitsBack(m_lines, taken.lines, taken.lineIndices)
        || !fitsBack(m_labels, taken.labels, taken.labelIndices))
        return;
    // The scale may have changed since the records were taken.
    for (MapLine& line : taken.lines) {
        scalePoint(line.p1, scale);
        scalePoint(line.p2, scale);
    }
    for (MapLabel& label : taken.labels)
        scalePoint(label.pos, scale);
    std::size_t selected = moves::putBackAt(m_lines, taken.lines, taken.lineIndices);
    selected += moves::putBackAt(m_labels, taken.labels, taken.labelIndices);
    movedRecords(0, selected);
}

void MapDocument::movedRecords(std::size_t selectedOut, std::size_t selectedIn)
{
    m_selected = m_selected - selectedOut + selectedIn;
    ++m_removals;
    ++m_revision;
}

void MapDocument::setLineColor(std::size_t index, ColorRGB colour)
{
    MapLine& line = m_lines[index];
    line.r = colour.r;
    line.g = colour.g;
    line.b = colour.b;
    ++m_revision;
}

void MapDocument::setLabelColor(std::size_t index, ColorRGB colour)
{
    MapLabel& label = m_labels[index];
    label.r = colour.r;
    label.g = colour.g;
    label.b = colour.b;
    ++m_revision;
}

void MapDocument::setLineEnds(std::size_t index, const MapPoint& p1, const MapPoint& p2, float scale)
{
    MapLine& line = m_lines[index];
    line.p1 = p1;
    line.p2 = p2;
    scalePoint(line.p1, scale);
    scalePoint(line.p2, scale);
    ++m_placements;
    ++m_revision;
}

void MapDocument::setLabelPos(std::size_t index, const MapPoint& pos, float scale)
{
    MapLabel& label = m_labels[index];
    label.pos = pos;
    scalePoint(label.pos, scale);
    ++m_placements;
    ++m_revision;
}

void MapDocument::setLabelText(std::size_t index, std::string text, std::int16_t size)
{
    MapLabel& label = m_labels[index];
    label.text = std::move(text);
    label.size = size;
    ++m_revision;
}

void MapDocument::reserveMore(std::size_t lines, std::size_t labels)
{
    // Only a hint, judged from a file's size: a huge file of other text may
    // ask for more than there is, and then the arrays simply grow as they go.
    try {
        m_lines.reserve(m_lines.size() + lines);
        m_labels.reserve(m_labels.size() + labels);
    } catch (const std::exception&) {
        return;
    }
    if (m_fillAdvice)
        m_fillAdvice(m_lines.data() + m_lines.size(), (m_lines.capacity() - m_lines.size()) * sizeof(MapLine));
}

std::string toLabelText(std::string_view s)
{
    while (!s.empty() && s.front() == ' ')
        s.remove_prefix(1);
    while (!s.empty() && s.back() == ' ')
        s.remove_suffix(1);
    std::string text(s);
    std::replace(text.begin(), text.end(), ' ', '_');
    return text;
}

} // namespace plotwell
