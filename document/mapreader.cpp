#include "document/mapreader.h"

#include <QFile>

#include <cstring>
#include <vector>

namespace plotwell {
namespace {

constexpr std::size_t kChunk = 1 << 20;

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

} // namespace

ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale)
{
    ReadResult result;
    result.opened = true;
    std::vector<char> buffer(kChunk);
    std::size_t filled = 0;
    std::size_t lineNumber = 0;
    bool atEnd = false;

    while (!atEnd) {
        if (buffer.size() - filled < kChunk / 2)
            buffer.resize(buffer.size() * 2); // a line longer than the buffer
        const qint64 got = device.read(buffer.data() + filled, qint64(buffer.size() - filled));
        if (got <= 0)
            atEnd = true;
        else
            filled += std::size_t(got);

        const char* const data = buffer.data();
        std::size_t start = 0;
        for (;;) {
            const char* const from = data + start;
            const std::size_t left = filled - start;
            if (left == 0)
                break;
            // The line ends at the first CR or LF; a CR directly followed by
            // LF ends it once.
            const char* lf = static_cast<const char*>(std::memchr(from, '\n', left));
            const std::size_t span = lf ? std::size_t(lf - from) : left;
            const char* cr = static_cast<const char*>(std::memchr(from, '\r', span));
            std::size_t length;
            std::size_t ending;
            if (cr) {
                length = std::size_t(cr - from);
                if (length + 1 < left)
                    ending = from[length + 1] == '\n' ? 2 : 1;
                else if (atEnd)
                    ending = 1;
                else
                    break; // a CR at the end of the buffer: an LF may follow
            } else if (lf) {
                length = span;
                ending = 1;
            } else if (atEnd) {
                length = left;
                ending = 0;
            } else {
                break; // the rest of this line is still to be read
            }
            ++lineNumber;
            if (!takeLine(std::string_view(from, length), doc, layer, scale, result)) {
                result.stoppedAtLine = lineNumber;
                return result;
            }
            start += length + ending;
        }
        std::memmove(buffer.data(), buffer.data() + start, filled - start);
        filled -= start;
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
