#include "document/mapwriter.h"

#include "document/numbertext.h"

#include <QFileInfo>
#include <QIODevice>
#include <QSaveFile>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

namespace plotwell {
namespace {

// Records are formatted into one large block that goes to the file in a
// single write: a million lines would otherwise mean millions of small writes.
constexpr std::size_t kBlock = std::size_t(1) << 22;

// The most one record can take apart from a label's text: the prefix, six
// coordinates, three colours, a size, the commas and the line end.
constexpr std::size_t kMaxRecordFields = 2 + 6 * (kMaxSingleText + 1) + 3 * 4 + 7 + 2;

class BlockWriter {
public:
    // Takes each full block; false when it could not be written.
    using Sink = std::function<bool(const char*, std::size_t)>;

    explicit BlockWriter(Sink sink) : m_sink(std::move(sink)) {}

    bool failed() const { return m_failed; }
    std::size_t bytes() const { return m_bytes; }

    // Space for at least n bytes (n at most kBlock); give the end to advance().
    char* room(std::size_t n)
    {
        if (m_block.size() - m_used < n)
            makeRoom(n);
        return m_block.data() + m_used;
    }
    void advance(const char* end) { m_used = std::size_t(end - m_block.data()); }

    // Any amount of text, however long.
    void put(std::string_view text)
    {
        while (!text.empty()) {
            if (m_used == m_block.size())
                makeRoom(1);
            const std::size_t n = std::min(text.size(), m_block.size() - m_used);
            std::memcpy(m_block.data() + m_used, text.data(), n);
            m_used += n;
            text.remove_prefix(n);
        }
    }

    void flush()
    {
        // After a failed write the rest is dropped: the file is discarded anyway.
        if (!m_failed && m_used > 0) {
            m_failed = !m_sink(m_block.data(), m_used);
            if (!m_failed)
                m_bytes += m_used;
        }
        m_used = 0;
    }

private:
    // The block grows up to its full size as text comes, so that a small
    // layer does not pay for clearing a large block; once full it is flushed.
    void makeRoom(std::size_t n)
    {
        if (m_block.size() < kBlock)
            m_block.resize(std::min(kBlock, std::max({m_block.size() * 2, m_used + n, kFirstBlock})));
        if (m_block.size() - m_used < n)
            flush();
    }

    static constexpr std::size_t kFirstBlock = std::size_t(1) << 16;
    std::vector<char> m_block;
    std::size_t m_used = 0;
    std::size_t m_bytes = 0;
    bool m_failed = false;
    Sink m_sink;
};

char* putWhole(char* out, int value)
{
    return std::to_chars(out, out + 8, value).ptr;
}

char* putPoint(char* out, const MapPoint& p)
{
    out = writeSingle(out, p.x);
    *out++ = ',';
    out = writeSingle(out, p.y);
    *out++ = ',';
    out = writeSingle(out, p.z);
    *out++ = ',';
    return out;
}

char* putColour(char* out, std::uint8_t r, std::uint8_t g, std::uint8_t b)
{
    out = putWhole(out, r);
    *out++ = ',';
    out = putWhole(out, g);
    *out++ = ',';
    return putWhole(out, b);
}

char* putLineEnd(char* out)
{
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

void writeLine(BlockWriter& w, const MapLine& line)
{
    char* out = w.room(kMaxRecordFields);
    *out++ = 'L';
    *out++ = ' ';
    out = putPoint(out, line.p1);
    out = putPoint(out, line.p2);
    out = putColour(out, line.r, line.g, line.b);
    w.advance(putLineEnd(out));
}

void writeLabel(BlockWriter& w, const MapLabel& label)
{
    char* out = w.room(kMaxRecordFields);
    *out++ = 'P';
    *out++ = ' ';
    out = putPoint(out, label.pos);
    out = putColour(out, label.r, label.g, label.b);
    *out++ = ',';
    out = putWhole(out, label.size);
    *out++ = ',';
    w.advance(out);
    w.put(label.text);
    w.advance(putLineEnd(w.room(2)));
}

// All L records of the layer, then all its P records, each in document order.
void writeLayer(BlockWriter& w, const MapDocument& doc, std::int16_t layer)
{
    for (const MapLine& line : doc.lines()) {
        if (line.layer == layer)
            writeLine(w, line);
        if (w.failed())
            return;
    }
    for (const MapLabel& label : doc.labels()) {
        if (label.layer == layer)
            writeLabel(w, label);
        if (w.failed())
            return;
    }
    w.flush();
}

const QString kLeftAsItWas = QStringLiteral("; the file was left as it was");

} // namespace

std::string formatLayer(const MapDocument& doc, std::int16_t layer)
{
    std::string text;
    BlockWriter w([&text](const char* data, std::size_t n) {
        text.append(data, n);
        return true;
    });
    writeLayer(w, doc, layer);
    return text;
}

WriteResult writeLayerRecords(QIODevice& device, const MapDocument& doc, std::int16_t layer)
{
    // A write may take only part of a block, as when the disk fills up; the
    // rest is tried again, so that a failure comes with the system's reason.
    BlockWriter w([&device](const char* data, std::size_t n) {
        while (n > 0) {
            const qint64 written = device.write(data, qint64(n));
            if (written <= 0)
                return false;
            data += written;
            n -= std::size_t(written);
        }
        return true;
    });
    writeLayer(w, doc, layer);
    WriteResult result;
    result.bytes = w.bytes();
    if (w.failed()) {
        result.error = device.errorString();
        if (result.error.isEmpty())
            result.error = QStringLiteral("the data could not be written");
    }
    return result;
}

WriteResult writeLayerFile(const QString& path, const MapDocument& doc, std::int16_t layer)
{
    WriteResult result;
    // The new file replaces the old one by renaming, which would put a
    // regular file in the place of a pipe or a device such as /dev/null.
    const QFileInfo target(path);
    if (target.isDir()) {
        result.error = QStringLiteral("it is a folder, not a file");
        return result;
    }
    if (target.exists() && !target.isFile()) {
        result.error = QStringLiteral("it is not a regular file (a pipe, a device or a socket)");
        return result;
    }
    QSaveFile file(path);
    // Written in blocks of its own, so Qt's small write buffer would only add a copy.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        result.error = file.errorString();
        return result;
    }
    result = writeLayerRecords(file, doc, layer);
    if (!result.ok()) {
        file.cancelWriting(); // the new file is dropped, the old one stays as it was
        result.error += kLeftAsItWas;
        return result;
    }
    // Only now does the new file take the old one's place.
    if (!file.commit())
        result.error = file.errorString() + kLeftAsItWas;
    return result;
}

} // namespace plotwell
