#include "document/mapreader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace plotwell {
namespace {

// Small enough to stay in the cache, large enough that reads are few.
constexpr std::size_t kChunk = 64 * 1024;

std::string tooLongReason()
{
    return "record longer than " + std::to_string(kMaxRecordLine) + " bytes";
}

// Whether a line that starts with these n bytes (n > 0) can be a record.
bool mayBeRecord(const char* p, std::size_t n)
{
    return (p[0] == 'L' || p[0] == 'P') && (n < 2 || p[1] == ' ');
}

// Where the text after the line end at data[end] starts. A CR that ends the
// data read so far may still have its LF in the next piece.
std::size_t pastLineEnd(const char* data, std::size_t end, std::size_t filled, bool& lfMayFollow)
{
    if (data[end] == '\r') {
        if (end + 1 == filled) {
            lfMayFollow = true;
            return filled;
        }
        if (data[end + 1] == '\n')
            return end + 2;
    }
    return end + 1;
}

// Notes a NUL byte among the n bytes at data, the lines the read went
// through, whether taken or skipped; what was read beyond a stop is not
// looked at, so that the answer does not depend on the size of the pieces.
void noteNul(const char* data, std::size_t n, ReadResult& result)
{
    if (!result.holdsNul && n > 0 && std::memchr(data, '\0', n))
        result.holdsNul = true;
}

// Hands one text line to the document; false when the record failed.
bool takeLine(std::string_view line, MapDocument& doc, std::int16_t& layer, float scale, ReadResult& result)
{
    if (line.size() < 2 || line[1] != ' ')
        return true;
    if (line.size() > kMaxRecordLine && (line[0] == 'L' || line[0] == 'P')) {
        result.reason = tooLongReason();
        return false;
    }
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

ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale,
                          const ReadProgress& progress)
{
    ReadResult result;
    result.opened = true;
    std::vector<char> buffer(kChunk);
    std::size_t filled = 0; // bytes held, from the start of a line on
    std::size_t lineNumber = 0;
    bool atEnd = false;
    bool skipping = false;    // inside a line that is not a record, its start already dropped
    bool lfMayFollow = false; // the last line ended in a CR that ended the data read
    LineEnds ends;
    const qint64 total = device.isSequential() ? -1 : device.size() - device.pos();
    qint64 done = 0;
    std::size_t consumed = 0;
    bool reserved = false;
    // The bytes kept from the last piece hold no line end: the search goes on after them.
    std::size_t searchFrom = 0;

    while (!atEnd) {
        if (buffer.size() - filled < kChunk / 2)
            buffer.resize(buffer.size() * 2); // a record line longer than the buffer
        const qint64 got = device.read(buffer.data() + filled, qint64(buffer.size() - filled));
        if (got < 0) {
            result.stoppedAtLine = lineNumber + 1;
            result.reason = "the rest could not be read: " + device.errorString().toStdString();
            return result;
        }
        if (got == 0)
            atEnd = true;
        filled += std::size_t(got);
        done += got;
        ends.reset();

        const char* const data = buffer.data();
        std::size_t start = 0;
        if (lfMayFollow) {
            lfMayFollow = false;
            if (filled > 0 && data[0] == '\n')
                start = 1; // the second half of a CR LF
        }
        if (skipping) {
            const std::size_t end = ends.next(data, start, filled);
            if (end < filled) {
                skipping = false;
                ++lineNumber;
                start = pastLineEnd(data, end, filled, lfMayFollow);
            } else {
                start = filled; // more of the same line: none of it is needed
            }
        }
        while (start < filled) {
            const std::size_t end = ends.next(data, std::max(start, searchFrom), filled);
            if (end == filled && !atEnd)
                break; // the rest of this line is still to be read
            ++lineNumber;
            if (!takeLine(std::string_view(data + start, end - start), doc, layer, scale, result)) {
                result.stoppedAtLine = lineNumber;
                noteNul(data, end, result);
                return result;
            }
            start = end == filled ? filled : pastLineEnd(data, end, filled, lfMayFollow);
        }

        // What is left is the start of a line whose end is still to come.
        const std::size_t rest = filled - start;
        if (rest > 0 && !mayBeRecord(data + start, rest)) {
            skipping = true; // a line that is not a record: only its end matters
            start = filled;
        } else if (rest > kMaxRecordLine) {
            result.stoppedAtLine = lineNumber + 1;
            result.reason = tooLongReason();
            noteNul(data, start, result);
            return result;
        }
        noteNul(data, start, result);
        if (start > 0)
            std::memmove(buffer.data(), buffer.data() + start, filled - start);
        filled -= start;
        searchFrom = filled;
        consumed += start;
        if (!reserved && consumed > 0) {
            reserveForRest(doc, result, consumed, total);
            reserved = true;
        }
        if (got > 0 && progress && !progress(done, total)) {
            result.cancelled = true;
            return result;
        }
    }
    return result;
}

ReadResult readMapFile(const QString& path, MapDocument& doc, std::int16_t layer, float scale,
                       const ReadProgress& progress)
{
    ReadResult result;
    // Checked before opening: opening a pipe waits until something writes to
    // it, and a device such as /dev/zero never ends.
    const QFileInfo info(path);
    if (info.isDir()) {
        result.openError = QStringLiteral("it is a folder, not a file");
        return result;
    }
    if (info.exists() && !info.isFile()) {
        result.openError = QStringLiteral("it is not a regular file (a pipe, a device or a socket)");
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.openError = file.errorString();
        return result;
    }
    return readMapRecords(file, doc, layer, scale, progress);
}

std::optional<std::size_t> countTextLines(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    std::vector<char> buffer(kChunk);
    std::size_t lines = 0;
    char last = '\n'; // as if a line had just ended
    for (;;) {
        const qint64 got = file.read(buffer.data(), qint64(buffer.size()));
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        for (qint64 i = 0; i < got; ++i) {
            const char c = buffer[std::size_t(i)];
            // A CR LF is one line end, counted at its CR.
            if (c == '\r' || (c == '\n' && last != '\r'))
                ++lines;
            last = c;
        }
    }
    if (last != '\n' && last != '\r')
        ++lines; // the last line has no line end
    return lines;
}

} // namespace plotwell
