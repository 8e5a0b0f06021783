#include "document/mapreader.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

// A sequential device that hands out its bytes a few at a time, so that line
// ends fall across the reader's reads.
class TrickleDevice : public QIODevice {
public:
    TrickleDevice(QByteArray data, qint64 step) : m_data(std::move(data)), m_step(step) {}
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* out, qint64 max) override
    {
        const qint64 n = std::min({max, m_step, qint64(m_data.size()) - m_at});
        std::copy_n(m_data.constData() + m_at, n, out);
        m_at += n;
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_data;
    qint64 m_step;
    qint64 m_at = 0;
};

ReadResult readText(const QByteArray& text, MapDocument& doc, std::int16_t layer = 1, float scale = 1)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return readMapRecords(buffer, doc, layer, scale);
}

std::vector<float> lineXs(const MapDocument& doc)
{
    std::vector<float> xs;
    for (const MapLine& l : doc.lines())
        xs.push_back(l.p1.x);
    return xs;
}

const QByteArray kLine1 = "L 1, 2, 3, 4, 5, 6, 255, 0, 0";
const QByteArray kLine2 = "L 2,0,0,1,1,1,0,255,0";
const QByteArray kLabel = "P 1, 2, 3, 0, 0, 255, 2, Camp Fire";

TEST(MapReader, LineAndLabelRecordsInFileOrder)
{
    MapDocument doc;
    const ReadResult r = readText(kLine1 + "\r\n" + kLabel + "\r\n" + kLine2 + "\r\n", doc, 1, 2);
    EXPECT_TRUE(r.opened);
    EXPECT_EQ(r.stoppedAtLine, 0u);
    EXPECT_EQ(r.linesAdded, 2u);
    EXPECT_EQ(r.labelsAdded, 1u);
    EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 2}));
    const MapLine& l = doc.lines()[0];
    EXPECT_EQ(l.p2.z, 6);
    EXPECT_EQ(l.r, 255);
    EXPECT_EQ(l.layer, 1);
    EXPECT_EQ(l.p2.sx, 8);
    ASSERT_EQ(doc.labelCount(), 1u);
    EXPECT_EQ(doc.labels()[0].text, "Camp_Fire");
    EXPECT_EQ(doc.labels()[0].b, 255);
    EXPECT_EQ(doc.labels()[0].size, 2);
    EXPECT_EQ(doc.labels()[0].pos.sy, 4);
}

TEST(MapReader, OnlyLinesStartingWithCapitalLetterAndBlankAreRecords)
{
    const QByteArray skipped[] = {
        "", " ", "l 1,2,3,4,5,6,0,0,0", " L 1,2,3,4,5,6,0,0,0", "L\t1,2,3,4,5,6,0,0,0",
        "L1,2,3,4,5,6,0,0,0", "p 1,2,3,0,0,0,1,x", " P 1,2,3,0,0,0,1,x", "P\t1,2,3,0,0,0,1,x",
        "L", "P", "Lx", "# a comment", "X 1,2,3,4,5,6,0,0,0", "\tL 1,2,3,4,5,6,0,0,0",
    };
    for (const QByteArray& line : skipped) {
        MapDocument doc;
        const ReadResult r = readText(kLine1 + "\r\n" + line + "\r\n" + kLine2 + "\r\n", doc);
        EXPECT_EQ(r.stoppedAtLine, 0u) << line.constData();
        EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 2})) << line.constData();
        EXPECT_EQ(doc.labelCount(), 0u) << line.constData();
    }
}

TEST(MapReader, LineEndsAreCrLfLoneCrOrLoneLf)
{
    struct Case {
        const char* name;
        QByteArray text;
    };
    const Case cases[] = {
        {"CR LF", kLine1 + "\r\n" + kLabel + "\r\n" + kLine2 + "\r\n"},
        {"CR", kLine1 + "\r" + kLabel + "\r" + kLine2 + "\r"},
        {"LF", kLine1 + "\n" + kLabel + "\n" + kLine2 + "\n"},
        {"mixed", kLine1 + "\r" + kLabel + "\n" + kLine2 + "\r\n"},
        {"no final end", kLine1 + "\r\n" + kLabel + "\r\n" + kLine2},
        {"LF CR is two ends", kLine1 + "\n\r" + kLabel + "\n\r" + kLine2},
        {"blank lines between", kLine1 + "\r\r\n\n" + kLabel + "\n\n\r" + kLine2 + "\r\n\r\n"},
    };
    for (const auto& c : cases) {
        for (const qint64 step : {qint64(1) << 30, qint64(1), qint64(2), qint64(3), qint64(7)}) {
            MapDocument doc;
            TrickleDevice device(c.text, step);
            device.open(QIODevice::ReadOnly);
            const ReadResult r = readMapRecords(device, doc, 1, 1);
            EXPECT_EQ(r.stoppedAtLine, 0u) << c.name << " in steps of " << step;
            EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 2})) << c.name << " in steps of " << step;
            ASSERT_EQ(doc.labelCount(), 1u) << c.name << " in steps of " << step;
            // No line end is left on the text.
            EXPECT_EQ(doc.labels()[0].text, "Camp_Fire") << c.name;
            EXPECT_EQ(doc.lines()[1].b, 0) << c.name;
        }
    }
}

TEST(MapReader, ABadRecordStopsTheReadAndKeepsWhatCameBefore)
{
    struct Case {
        QByteArray bad;
        std::string reasonMentions;
    };
    const Case cases[] = {
        {"L 1,2,3,4,5,6,256,0,0", "seventh"},
        {"L 1,2,3,4,5,6,0,0", "nine"},
        {"L ", "first"},
        {"L 1,2,zero,4,5,6,0,0,0", "third"},
        {"P 1,2,3,0,0,0,40000,Big", "seventh"},
        {"P 1,2,3,0,0,0,1", "eight"},
        {QByteArray("L 1,2,3") + '\0' + ",4,5,6,0,0,0", "third"},
    };
    for (const auto& c : cases) {
        MapDocument doc;
        const ReadResult r = readText(kLine1 + "\n" + kLabel + "\n\n" + c.bad + "\n" + kLine2 + "\n" + kLabel, doc);
        EXPECT_TRUE(r.opened);
        EXPECT_EQ(r.stoppedAtLine, 4u) << c.bad.constData();
        EXPECT_NE(r.reason.find(c.reasonMentions), std::string::npos) << c.bad.constData() << ": " << r.reason;
        EXPECT_EQ(lineXs(doc), (std::vector<float>{1})) << c.bad.constData();
        EXPECT_EQ(doc.labelCount(), 1u) << c.bad.constData();
        EXPECT_EQ(r.linesAdded, 1u);
        EXPECT_EQ(r.labelsAdded, 1u);
    }
}

TEST(MapReader, ABadRecordIsReportedByItsLineNumber)
{
    struct Case {
        const char* name;
        QByteArray text;
        std::size_t line;
    };
    const QByteArray bad = "L 1,2";
    const Case cases[] = {
        {"CR LF ends one line", kLine1 + "\r\n" + kLine2 + "\r\n" + bad, 3},
        {"LF CR ends two", kLine1 + "\n\r" + kLine2 + "\n\r" + bad, 5},
        {"CR CR LF ends two", kLine1 + "\r\r\n" + bad, 3},
        {"lone ends", kLine1 + "\r\n\r" + bad + "\r\n" + kLine2, 3},
    };
    for (const auto& c : cases) {
        for (const qint64 step : {qint64(1) << 30, qint64(1), qint64(5)}) {
            MapDocument doc;
            TrickleDevice device(c.text, step);
            device.open(QIODevice::ReadOnly);
            EXPECT_EQ(readMapRecords(device, doc, 1, 1).stoppedAtLine, c.line) << c.name << " in steps of " << step;
        }
    }
}

TEST(MapReader, AnEmptyTextHoldsNoRecords)
{
    for (const QByteArray& text : {QByteArray(), QByteArray("\r\n"), QByteArray("\n\n\r"), QByteArray("no records here")}) {
        MapDocument doc;
        const ReadResult r = readText(text, doc);
        EXPECT_TRUE(r.opened);
        EXPECT_EQ(r.stoppedAtLine, 0u);
        EXPECT_EQ(doc.lineCount() + doc.labelCount(), 0u);
    }
}

TEST(MapReader, BinaryDataIsReadAsOtherLines)
{
    // Every byte value, several times over: after each line end comes a byte
    // that does not start a record, so all of it is skipped.
    QByteArray binary;
    for (int round = 0; round < 50; ++round)
        for (int b = 0; b < 256; ++b)
            binary.append(char(b));
    MapDocument doc;
    const ReadResult r = readText(kLine1 + "\r\n" + binary + "\n" + kLine2, doc);
    EXPECT_EQ(r.stoppedAtLine, 0u);
    EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 2}));
}

TEST(MapReader, AVeryLongLineDoesNotEndTheRead)
{
    const QByteArray longLine(50 * 1024 * 1024, 'x');
    MapDocument doc;
    const ReadResult r = readText(kLine1 + "\r\n" + longLine + "\r\n" + kLine2 + "\r\n" + kLabel, doc);
    EXPECT_EQ(r.stoppedAtLine, 0u);
    EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 2}));
    EXPECT_EQ(doc.labelCount(), 1u);

    // The same length as one label's text.
    MapDocument doc2;
    const QByteArray longLabel = "P 1,2,3,0,0,0,1," + longLine;
    const ReadResult r2 = readText(longLabel, doc2);
    EXPECT_EQ(r2.stoppedAtLine, 0u);
    ASSERT_EQ(doc2.labelCount(), 1u);
    EXPECT_EQ(doc2.labels()[0].text.size(), std::size_t(longLine.size()));
}

TEST(MapReader, ReadsFilesAndReportsOnesThatCannotBeOpened)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("zone.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(kLine1 + "\r\n" + kLabel + "\r\n");
    file.close();

    MapDocument doc;
    const ReadResult r = readMapFile(path, doc, 2, 1);
    EXPECT_TRUE(r.opened);
    EXPECT_EQ(doc.lineCount(), 1u);
    EXPECT_EQ(doc.labelCount(), 1u);
    EXPECT_EQ(doc.lines()[0].layer, 2);

    for (const QString& missing : {dir.filePath(QStringLiteral("missing.txt")), dir.path()}) {
        MapDocument empty;
        const ReadResult m = readMapFile(missing, empty, 2, 1);
        EXPECT_FALSE(m.opened);
        EXPECT_FALSE(m.openError.isEmpty());
        EXPECT_EQ(empty.lineCount() + empty.labelCount(), 0u);
    }
}

} // namespace
