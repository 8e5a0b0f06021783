#include "document/mapreader.h"
#include "tests/support/childrun.h"
#include "tests/support/devices.h"
#include "tests/support/files.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace plotwell;
using plotwell::test::GeneratedDevice;

namespace {

const QByteArray kLine1 = "L 1,2,3,4,5,6,255,0,0";
const QByteArray kLine2 = "L 2,0,0,1,1,1,0,255,0";
const QByteArray kLabelStart = "P 1,2,3,0,0,0,1,"; // 16 bytes, the text follows

ReadResult readBytes(const QByteArray& bytes, MapDocument& doc, const ReadProgress& progress = {})
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readMapRecords(buffer, doc, 1, 1, progress);
}

// A line that is not a record is skipped however long it is; a record line
// longer than the limit stops the read. Either way the reader's buffer stays
// small: it never holds more than one record line and one piece.
TEST(HostileRead, LongLinesKeepMemoryBounded)
{
    constexpr qint64 k200MB = qint64(200) << 20;
    const qint64 atLimit = qint64(kMaxRecordLine) - kLabelStart.size();
    const struct {
        const char* name;
        QByteArray head;
        qint64 fill;
        char byte;
        QByteArray tail;
        std::vector<qint64> steps;
        std::size_t lines, labels, stoppedAt;
    } cases[] = {
        {"200 MB of text", kLine1 + "\r\n", k200MB, 'x', "\r\n" + kLine2, {1 << 30}, 2, 0, 0},
        {"200 MB of blanks", kLine1 + "\n", k200MB, ' ', "\n" + kLine2 + "\n", {1 << 30}, 2, 0, 0},
        {"an L and 200 MB", kLine1 + "\r", k200MB, 'L', "\r" + kLine2, {1 << 30}, 2, 0, 0},
        {"a 200 MB label", kLine1 + "\n" + kLabelStart, k200MB, 'a', "\n" + kLine2, {1 << 30}, 1, 0, 2},
        {"a 200 MB line record", kLine1 + "\nL ", k200MB, ' ', "1,2,3,4,5,6,7,8,9\n", {1 << 30}, 1, 0, 2},
        {"a label at the limit",
         kLine1 + "\r\n" + kLabelStart,
         atLimit,
         'a',
         "\r\n" + kLine2,
         {1 << 30, 4099},
         2,
         1,
         0},
        {"one byte over", kLine1 + "\r\n" + kLabelStart, atLimit + 1, 'a', "\r\n" + kLine2, {1 << 30, 4099}, 1, 0, 2},
        {"one byte over, last", kLine1 + "\r\n" + kLabelStart, atLimit + 1, 'a', "", {1 << 30, 4099}, 1, 0, 2},
    };
    for (const auto& c : cases) {
        for (const qint64 step : c.steps) {
            GeneratedDevice device(c.head, c.fill, c.byte, c.tail, step);
            MapDocument doc;
            const ReadResult r = readMapRecords(device, doc, 1, 1);
            EXPECT_EQ(r.linesAdded, c.lines) << c.name << ", step " << step;
            EXPECT_EQ(r.labelsAdded, c.labels) << c.name << ", step " << step;
            EXPECT_EQ(r.stoppedAtLine, c.stoppedAt) << c.name << ", step " << step;
            if (c.stoppedAt != 0) {
                EXPECT_EQ(r.reason, "record longer than 1048576 bytes") << c.name;
            }
            EXPECT_LE(device.largestRead(), 4 << 20) << c.name << ", step " << step;
            if (c.labels == 1) {
                EXPECT_EQ(doc.labels()[0].text.size(), std::size_t(atLimit));
            }
        }
    }
}

// A device that fails part-way is a stop, not an end: the records before it
// stay and the caller learns that the rest is missing.
TEST(HostileRead, ADeviceThatFailsStopsTheRead)
{
    GeneratedDevice device(kLine1 + "\r\n\r\n" + kLine2 + "\r\nL 1,2,3", 0, ' ', "");
    device.failAtEnd();
    MapDocument doc;
    const ReadResult r = readMapRecords(device, doc, 1, 1);
    EXPECT_EQ(r.linesAdded, 2u);
    EXPECT_EQ(r.stoppedAtLine, 4u);
    EXPECT_EQ(r.reason, "the rest could not be read: Input/output error");
    EXPECT_FALSE(r.complete());
}

TEST(HostileRead, NulBytesMarkTheInputAsNotText)
{
    const struct {
        const char* name;
        QByteArray bytes;
        std::size_t records;
        bool holdsNul;
    } cases[] = {
        {"text", kLine1 + "\r\n" + kLabelStart + "Camp\r\n", 2, false},
        {"a NUL in a label", kLine1 + "\r\n" + kLabelStart + QByteArray("Ca\0mp", 5), 2, true},
        {"a NUL in a skipped line", kLine1 + "\r\n" + QByteArray("#\0\r\n", 4), 1, true},
        {"a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0", 20), 0, true},
        {"UTF-16 text", QByteArray("L\0 \0001\0,\0", 8), 0, true},
        {"a NUL after the stop", kLine1 + "\r\nL 1,2\r\n" + QByteArray("\0", 1), 1, false},
    };
    for (const auto& c : cases) {
        MapDocument doc;
        const ReadResult r = readBytes(c.bytes, doc);
        EXPECT_EQ(r.holdsNul, c.holdsNul) << c.name;
        EXPECT_EQ(r.linesAdded + r.labelsAdded, c.records) << c.name;
    }
}

// The hook sees the bytes read grow to the whole; cancelling leaves the
// records read so far at the end of the arrays, after the ones already there.
TEST(HostileRead, ProgressCanCancelAndTheRecordsReadSoFarAreTheLastOnes)
{
    QByteArray text;
    for (int i = 0; i < 20000; ++i)
        text += kLine1 + "\r\n" + kLabelStart + "Camp\r\n";
    std::vector<std::pair<qint64, qint64>> calls;
    MapDocument doc;
    ReadResult r = readBytes(text, doc, [&](qint64 done, qint64 total) {
        calls.emplace_back(done, total);
        return true;
    });
    EXPECT_TRUE(r.complete());
    ASSERT_GT(calls.size(), 3u);
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(calls[i].second, text.size());
        EXPECT_TRUE(i == 0 || calls[i].first > calls[i - 1].first);
    }
    EXPECT_EQ(calls.back().first, text.size());

    const std::size_t linesBefore = doc.lineCount(), labelsBefore = doc.labelCount();
    int called = 0;
    r = readBytes(text, doc, [&](qint64, qint64) { return ++called < 2; });
    EXPECT_EQ(called, 2);
    EXPECT_TRUE(r.cancelled && !r.complete() && r.stoppedAtLine == 0);
    EXPECT_GT(r.linesAdded, 0u);
    EXPECT_LT(r.linesAdded, linesBefore);
    EXPECT_EQ(doc.lineCount(), linesBefore + r.linesAdded);
    EXPECT_EQ(doc.labelCount(), labelsBefore + r.labelsAdded);

    // A device that cannot tell its size says so.
    GeneratedDevice device(text, 0, ' ', "");
    qint64 total = 0;
    readMapRecords(device, doc, 1, 1, [&](qint64, qint64 t) { return total = t, true; });
    EXPECT_EQ(total, -1);
}

#ifdef Q_OS_UNIX
// Opening a pipe would wait for a writer and a device would never end, so
// only regular files are read (the command line tool's tests show the
// folder and the pipe); a file that cannot be read says why.
TEST(HostileRead, OnlyRegularFilesAreRead)
{
    QTemporaryDir dir;
    for (const char* path : {"/dev/zero", "/nonexistent/missing.txt"}) {
        MapDocument doc;
        const ReadResult r = readMapFile(QString::fromLatin1(path), doc, 1, 1);
        EXPECT_FALSE(r.opened) << path;
        EXPECT_EQ(r.openError.toStdString(),
                  path[1] == 'd' ? "it is not a regular file (a pipe, a device or a socket)"
                                 : "No such file or directory");
    }

    const QString locked = test::writeBytes(dir.filePath(QStringLiteral("locked.txt")), kLine1);
    ASSERT_EQ(chmod(QFile::encodeName(dir.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(locked).constData(), 0), 0);
    const auto error = test::runInChild({true, 0}, [&] {
        MapDocument doc;
        const ReadResult r = readMapFile(locked, doc, 1, 1);
        return r.opened ? std::string("opened") : r.openError.toStdString();
    });
    if (!error)
        GTEST_SKIP() << "cannot run a child process as an ordinary user here";
    EXPECT_EQ(*error, "Permission denied");
}
#endif

} // namespace
