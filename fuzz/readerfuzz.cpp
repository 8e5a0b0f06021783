// Fuzz target for the map reader and writer. Each input is read as loading a
// file reads it, written as saving the layer writes it, and read back. It
// aborts when
// - the written text does not read back whole, or to other record counts;
// - normalising twice gives other text than normalising once;
// - writing to a device gives other text than formatting the layer;
// - reading the same bytes in small pieces gives another result.
// The sanitizers abort on any memory error or undefined behaviour.

#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "document/mapwriter.h"

#include <QBuffer>
#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace plotwell;

namespace {

// Loading the base layer: the base layer is made active and the records
// are added with layer 0, which stands for the active layer.
constexpr std::int16_t kLoadLayer = 0;
constexpr float kScale = 1;

[[noreturn]] void fail(const char* what, const std::string& detail = {})
{
    std::fprintf(stderr, "map reader fuzz: %s\n%s\n", what, detail.c_str());
    std::abort();
}

// A sequential device that hands out its bytes a few at a time, so that line
// ends and long lines fall across the reader's reads.
class PieceDevice : public QIODevice {
public:
    PieceDevice(const QByteArray& data, qint64 step) : m_data(data), m_step(step) { open(ReadOnly | Unbuffered); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* out, qint64 max) override
    {
        const qint64 n = std::min({max, m_step, qint64(m_data.size()) - m_at});
        std::memcpy(out, m_data.constData() + m_at, std::size_t(n));
        m_at += n;
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const QByteArray& m_data;
    qint64 m_step;
    qint64 m_at = 0;
};

ReadResult load(QIODevice& device, MapDocument& doc)
{
    doc.activeLayer = kLoadLayer;
    return readMapRecords(device, doc, kLoadLayer, kScale);
}

ReadResult loadBytes(const QByteArray& bytes, MapDocument& doc)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return load(buffer, doc);
}

bool sameRead(const ReadResult& a, const ReadResult& b)
{
    return a.linesAdded == b.linesAdded && a.labelsAdded == b.labelsAdded && a.stoppedAtLine == b.stoppedAtLine
        && a.reason == b.reason && a.holdsNul == b.holdsNul;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));

    MapDocument doc;
    const ReadResult first = loadBytes(input, doc);
    if (!first.opened || first.cancelled)
        fail("an in-memory read did not run to its end or stop");
    if (first.linesAdded != doc.lineCount() || first.labelsAdded != doc.labelCount())
        fail("the counts differ from the records in the document");
    const std::string once = formatLayer(doc, kLoadLayer);

    QByteArray written;
    QBuffer sink(&written);
    sink.open(QIODevice::WriteOnly);
    if (!writeLayerRecords(sink, doc, kLoadLayer).ok() || written.toStdString() != once)
        fail("writing to a device differs from formatting the layer", once);

    MapDocument back;
    const ReadResult second = loadBytes(QByteArray::fromStdString(once), back);
    if (!second.complete())
        fail("the written text does not read back whole", second.reason + "\n" + once);
    if (second.linesAdded != first.linesAdded || second.labelsAdded != first.labelsAdded)
        fail("the written text reads back to other record counts", once);
    const std::string twice = formatLayer(back, kLoadLayer);
    if (twice != once)
        fail("normalising twice differs from normalising once", once + "\n----\n" + twice);

    // The same bytes in pieces of 1 to 16 bytes, chosen by the input itself.
    const qint64 step = size > 0 ? 1 + data[0] % 16 : 1;
    PieceDevice pieces(input, step);
    MapDocument piecewise;
    const ReadResult third = load(pieces, piecewise);
    if (!sameRead(first, third) || formatLayer(piecewise, kLoadLayer) != once)
        fail("reading in small pieces gives another result", std::to_string(step));
    return 0;
}
