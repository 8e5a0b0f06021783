#include "document/mapreader.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <vector>

namespace plotwell {
namespace {

// Small enough to stay in the cache, large enough that reads are few.
constexpr std::size_t kChunk = 64 * 1024;

// Hands one text line to the document; false when the record failed.
bool takeLine(std::string_view line, MapDocument& doc, std::int16_t& layer, float scale, ReadResult& result)
{
    if (line.size() < 2 || line[1] != ' ')
        return true;
    RecordError error;
    if (line[0] == 'L') {
        error = doc.addLine(line.substr(2), layer, scale);
        if (!error)
            ++result.linesAdded;
    } else if (line[0] == 'P') {
        error = doc.addLabel(line.substr(2), layer, scale);
        if (!error)
            ++result.labelsAdded;
    }
    if (error)
        result.reason = *error;
    return !error;
}

// Finds line ends in the reader's buffer. The next CR and the next LF are
// each searched once and remembered until the read passes them, so that a
// file with only one kind of line end is not searched again for the other on
// every line.
class LineEnds {
public:
    void reset() { m_cr = m_lf = kUnknown; }

    // Offset of the first CR or LF at or after start, or filled when none.
    std::size_t next(const char* data, std::size_t start, std::size_t filled)
    {
        return std::min(find(m_cr, '\r', data, start, filled), find(m_lf, '\n', data, start, filled));
    }

private:
    static constexpr std::size_t kUnknown = std::size_t(-1);

    static std::size_t find(std::size_t& cached, char c, const char* data, std::size_t start, std::size_t filled)
    {
        if (cached == kUnknown || cached < start) {
            const void* at = std::memchr(data + start, c, filled - start);
            cached = at ? std::size_t(static_cast<const char*>(at) - data) : filled;
        }
        return cached;
    }

    std::size_t m_cr = kUnknown;
    std::size_t m_lf = kUnknown;
};

// Makes room for the records still to come, judged from those read so far,
// so that the arrays of a large map grow once instead of doubling again and
// again: every doubling copies what was read into fresh memory. A tenth more
// than the estimate allows for shorter lines further on; room that stays
// unused is never touched and costs no memory.
void reserveForRest(MapDocument& doc, const ReadResult& sofar, std::size_t consumed, qint64 total)
{
    if (consumed == 0 || total <= qint64(consumed))
        return;
    const double scale = double(total - qint64(consumed)) / double(consumed) * 1.1;
    doc.reserveMore(std::size_t(double(sofar.linesAdded) * scale), std::size_t(double(sofar.labelsAdded) * scale));
}

} // namespace

ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale)
{
    ReadResult result;
    result.opened = true;
    std::vector<char> buffer(kChunk);
    std::size_t filled = 0;
    std::size_t lineNumber = 0;
    bool atEnd = false;
    LineEnds ends;
    const qint64 total = device.isSequential() ? 0 : device.size() - device.pos();
    std::size_t consumed = 0;
    bool reserved = false;

    while (!atEnd) {
        if (buffer.size() - filled < kChunk / 2)
            buffer.resize(buffer.size() * 2); // a line longer than the buffer
        const qint64 got = device.read(buffer.data() + filled, qint64(buffer.size() - filled));
        if (got <= 0)
            atEnd = true;
        else
            filled += std::size_t(got);
        ends.reset();

        const char* const data = buffer.data();
        std::size_t start = 0;
        while (start < filled) {
            const std::size_t end = ends.next(data, start, filled);
            std::size_t ending = 1;
            if (end == filled) {
                if (!atEnd)
                    break; // the rest of this line is still to be read
                ending = 0; // the last line needs no line end
            } else if (data[end] == '\r') {
                if (end + 1 < filled)
                    ending = data[end + 1] == '\n' ? 2 : 1;
                else if (!atEnd)
                    break; // a CR at the end of what was read: an LF may follow
            }
            ++lineNumber;
            if (!takeLine(std::string_view(data + start, end - start), doc, layer, scale, result)) {
                result.stoppedAtLine = lineNumber;
                return result;
            }
            start = end + ending;
        }
        std::memmove(buffer.data(), buffer.data() + start, filled - start);
        filled -= start;
        consumed += start;
        if (!reserved && consumed > 0) {
            reserveForRest(doc, result, consumed, total);
            reserved = true;
        }
    }
    return result;
}

ReadResult readMapFile(const QString& path, MapDocument& doc, std::int16_t layer, float scale)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ReadResult result;
        result.openError = file.errorString();
        return result;
    }
    return readMapRecords(file, doc, layer, scale);
}

} // namespace plotwell
