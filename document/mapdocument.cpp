#include "document/mapdocument.h"

#include "document/numbertext.h"
#include "view/viewtransform.h"

#include <algorithm>

namespace plotwell {
namespace {

using Fields = std::array<std::string_view, 9>;

// Splits field text on "," into at most max fields; returns how many it found.
// Fields beyond the last wanted one are ignored, so it ends at the next comma.
std::size_t splitFields(std::string_view text, Fields& fields, std::size_t max)
{
    std::size_t count = 0;
    while (count < max) {
        const auto comma = text.find(',');
        fields[count++] = text.substr(0, comma);
        if (comma == std::string_view::npos)
            break;
        text.remove_prefix(comma + 1);
    }
    return count;
}

const char* const kFieldNames[] = {"first", "second", "third", "fourth", "fifth",
                                   "sixth", "seventh", "eighth", "ninth"};

std::string badField(std::size_t index, const char* what)
{
    return std::string(kFieldNames[index]) + " field is " + what;
}

bool readPoint(const Fields& f, std::size_t first, MapPoint& p, RecordError& error)
{
    float* targets[] = {&p.x, &p.y, &p.z};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto v = textToSingle(f[first + i]);
        if (!v) {
            error = badField(first + i, "not a single-precision number");
            return false;
        }
        *targets[i] = *v;
    }
    return true;
}

bool readColour(const Fields& f, std::size_t first, std::uint8_t& r, std::uint8_t& g,
                std::uint8_t& b, RecordError& error)
{
    std::uint8_t* targets[] = {&r, &g, &b};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto v = textToByte(f[first + i]);
        if (!v) {
            error = badField(first + i, "not a colour value 0..255");
            return false;
        }
        *targets[i] = *v;
    }
    return true;
}

} // namespace

RecordError MapDocument::addLine(std::string_view text, std::int16_t& layer, float scale)
{
    Fields f;
    if (splitFields(text, f, 9) < 9)
        return std::string("fewer than nine fields");
    if (layer == 0)
        layer = activeLayer;

    MapLine line;
    RecordError error;
    if (!readPoint(f, 0, line.p1, error) || !readPoint(f, 3, line.p2, error)
        || !readColour(f, 6, line.r, line.g, line.b, error))
        return error;
    line.layer = layer;
    scalePoint(line.p1, scale);
    scalePoint(line.p2, scale);
    m_lines.push_back(line);
    return std::nullopt;
}

RecordError MapDocument::addLabel(std::string_view text, std::int16_t& layer, float scale)
{
    Fields f;
    if (splitFields(text, f, 8) < 8)
        return std::string("fewer than eight fields");
    if (layer == 0)
        layer = activeLayer;

    MapLabel label;
    RecordError error;
    if (!readPoint(f, 0, label.pos, error) || !readColour(f, 3, label.r, label.g, label.b, error))
        return error;
    const auto size = textToInt16(f[6]);
    if (!size)
        return badField(6, "not a size in -32768..32767");
    label.size = *size;
    label.text = toLabelText(f[7]);
    label.layer = layer;
    scalePoint(label.pos, scale);
    m_labels.push_back(std::move(label));
    return std::nullopt;
}

bool MapDocument::removeRecordsWhere(const std::function<bool(std::int16_t, bool)>& test)
{
    // remove_if keeps the order of the records that stay.
    const auto lineEnd = std::remove_if(m_lines.begin(), m_lines.end(),
                                        [&](const MapLine& l) { return test(l.layer, l.selected); });
    const auto labelEnd = std::remove_if(m_labels.begin(), m_labels.end(),
                                         [&](const MapLabel& t) { return test(t.layer, t.selected); });
    const bool removed = lineEnd != m_lines.end() || labelEnd != m_labels.end();
    m_lines.erase(lineEnd, m_lines.end());
    m_labels.erase(labelEnd, m_labels.end());
    return removed;
}

void MapDocument::removeLastLine()
{
    if (!m_lines.empty())
        m_lines.pop_back();
}

void MapDocument::removeLastLabel()
{
    if (!m_labels.empty())
        m_labels.pop_back();
}

void MapDocument::clearRecords()
{
    std::vector<MapLine>().swap(m_lines);
    std::vector<MapLabel>().swap(m_labels);
}

void MapDocument::reserveMore(std::size_t lines, std::size_t labels)
{
    m_lines.reserve(m_lines.size() + lines);
    m_labels.reserve(m_labels.size() + labels);
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
