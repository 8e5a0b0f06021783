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

// One read of a file into a layer: the buffer, where its lines stand, and
// what was read so far. Lines are taken from the buffer a piece at a time; a
// line whose end is still to come is kept for the next piece.
class RecordReader {
public:
    RecordReader(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale)
        : m_device(device), m_doc(doc), m_layer(layer), m_scale(scale), m_buffer(kChunk),
          m_total(device.isSequential() ? -1 : device.size() - device.pos())
    {
        m_result.opened = true;
    }

    ReadResult run(const ReadProgress& progress)
    {
        while (!m_atEnd) {
            const qint64 got = readPiece();
            if (got < 0)
                return m_result;
            std::size_t start = startOfPiece();
            if (!takeWholeLines(start) || !keepRest(start))
                return m_result;
            if (got > 0 && progress && !progress(m_done, m_total)) {
                m_result.cancelled = true;
                return m_result;
            }
        }
        return m_result;
    }

private:
    // Appends the next piece to what the buffer keeps; the bytes read, or -1
    // when the device failed.
    qint64 readPiece()
    {
        if (m_buffer.size() - m_filled < kChunk / 2)
            m_buffer.resize(m_buffer.size() * 2); // a record line longer than the buffer
        const qint64 got = m_device.read(m_buffer.data() + m_filled, qint64(m_buffer.size() - m_filled));
        if (got < 0) {
            m_result.stoppedAtLine = m_lineNumber + 1;
            m_result.reason = "the rest could not be read: " + m_device.errorString().toStdString();
            return got;
        }
        if (got == 0)
            m_atEnd = true;
        m_filled += std::size_t(got);
        m_done += got;
        m_ends.reset();
        return got;
    }

    // Where the first line to take starts: after the LF of a CR LF split
    // between pieces, and after the end of a line that is not a record.
    std::size_t startOfPiece()
    {
        const char* const data = m_buffer.data();
        std::size_t start = 0;
        if (m_lfMayFollow) {
            m_lfMayFollow = false;
            if (m_filled > 0 && data[0] == '\n')
                start = 1; // the second half of a CR LF
        }
        if (!m_skipping)
            return start;
        const std::size_t end = m_ends.next(data, start, m_filled);
        if (end == m_filled)
            return m_filled; // more of the same line: none of it is needed
        m_skipping = false;
        ++m_lineNumber;
        return pastLineEnd(data, end, m_filled, m_lfMayFollow);
    }

    // Takes every line whose end the buffer holds (every line, at the end of
    // the file); false when a record stopped the read.
    bool takeWholeLines(std::size_t& start)
    {
        const char* const data = m_buffer.data();
        while (start < m_filled) {
            const std::size_t end = m_ends.next(data, std::max(start, m_searchFrom), m_filled);
            if (end == m_filled && !m_atEnd)
                break; // the rest of this line is still to be read
            ++m_lineNumber;
            if (!takeLine(std::string_view(data + start, end - start), m_doc, m_layer, m_scale, m_result)) {
                m_result.stoppedAtLine = m_lineNumber;
                noteNul(data, end, m_result);
                return false;
            }
            start = end == m_filled ? m_filled : pastLineEnd(data, end, m_filled, m_lfMayFollow);
        }
        return true;
    }

    // Keeps the start of a line whose end is still to come for the next
    // piece; false when it is a record line longer than a record may be.
    bool keepRest(std::size_t start)
    {
        const char* const data = m_buffer.data();
        const std::size_t rest = m_filled - start;
        if (rest > 0 && !mayBeRecord(data + start, rest)) {
            m_skipping = true; // a line that is not a record: only its end matters
            start = m_filled;
        } else if (rest > kMaxRecordLine) {
            m_result.stoppedAtLine = m_lineNumber + 1;
            m_result.reason = tooLongReason();
            noteNul(data, start, m_result);
            return false;
        }
        noteNul(data, start, m_result);
        if (start > 0)
            std::memmove(m_buffer.data(), m_buffer.data() + start, m_filled - start);
        m_filled -= start;
        m_searchFrom = m_filled; // the bytes kept hold no line end
        m_consumed += start;
        if (!m_reserved && m_consumed > 0) {
            reserveForRest(m_doc, m_result, m_consumed, m_total);
            m_reserved = true;
        }
        return true;
    }

    QIODevice& m_device;
    MapDocument& m_doc;
    std::int16_t m_layer; // 0 for the active layer, which the document then gives
    const float m_scale;
    ReadResult m_result;
    std::vector<char> m_buffer;
    std::size_t m_filled = 0; // bytes held, from the start of a line on
    std::size_t m_lineNumber = 0;
    bool m_atEnd = false;
    bool m_skipping = false; // inside a line that is not a record, its start already dropped
    bool m_lfMayFollow = false; // the last line ended in a CR that ended the data read
    LineEnds m_ends;
    const qint64 m_total;
    qint64 m_done = 0;
    std::size_t m_consumed = 0;
    bool m_reserved = false;
    std::size_t m_searchFrom = 0;
};

} // namespace

ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale,
                          const ReadProgress& progress)
{
    return RecordReader(device, doc, layer, scale).run(progress);
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
