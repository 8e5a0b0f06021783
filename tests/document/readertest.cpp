#include "document/mapreader.h"
#include "tests/support/devices.h"

#include <QBuffer>
#include <QByteArray>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace plotwell;

namespace {

// Reads text into doc on layer 2 at scale 3: from a buffer when step is 0, else trickled.
ReadResult read(const QByteArray& text, MapDocument& doc, qint64 step = 0)
{
    if (step > 0) {
        test::GeneratedDevice device(text, 0, ' ', {}, step);
        return readMapRecords(device, doc, 2, 3);
    }
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return readMapRecords(buffer, doc, 2, 3);
}

// Each line by its first coordinate, then each label by its text.
std::string summary(const MapDocument& doc)
{
    std::string s;
    for (const MapLine& l : doc.lines())
        s += "L" + std::to_string(int(l.p1.x)) + " ";
    for (const MapLabel& t : doc.labels())
        s += "P" + t.text + " ";
    return s;
}

const QByteArray kLine1 = "L 1, 2, 3, 4, 5, 6, 255, 0, 0";
const QByteArray kLine2 = "L 2,0,0,1,1,1,0,255,0";
const QByteArray kLabel = "P 1, 2, 3, 0, 0, 255, 2, Camp Fire";

TEST(MapReader, LineEndsSkippedLinesAndTheStopAtABadRecord)
{
    const struct {
        const char* name;
        QByteArray text;
        const char* records;
        std::size_t stoppedAt;
        const char* reason;
    } cases[] = {
        {"CR LF", kLine1 + "\r\n" + kLabel + "\r\n" + kLine2 + "\r\n", "L1 L2 PCamp_Fire ", 0, ""},
        {"CR", kLine1 + "\r" + kLabel + "\r" + kLine2 + "\r", "L1 L2 PCamp_Fire ", 0, ""},
        {"LF", kLine1 + "\n" + kLabel + "\n" + kLine2 + "\n", "L1 L2 PCamp_Fire ", 0, ""},
        {"mixed", kLine1 + "\r" + kLabel + "\n" + kLine2 + "\r\n", "L1 L2 PCamp_Fire ", 0, ""},
        {"no final end", kLine1 + "\r\n" + kLabel + "\r\n" + kLine2, "L1 L2 PCamp_Fire ", 0, ""},
        {"blank lines", kLine1 + "\r\r\n\n" + kLabel + "\n\n\r" + kLine2 + "\r\n\r\n", "L1 L2 PCamp_Fire ", 0, ""},
        {"other lines",
         kLine1
             + "\r\n\r\n \r\nl 1,2,3,4,5,6,0,0,0\r\n L 1,2,3,4,5,6,0,0,0\r\nL\t1,2,3,4,5,6,0,0,0\r\n"
               "L1,2,3,4,5,6,0,0,0\r\np 1,2,3,0,0,0,1,x\r\n P 1,2,3,0,0,0,1,x\r\nP\t1,2,3,0,0,0,1,x\r\nL\r\nP\r\n"
               "Lx\r\nX 1,2,3,4,5,6,0,0,0\r\n\tL 1,2,3,4,5,6,0,0,0\r\n"
             + kLine2,
         "L1 L2 ", 0, ""},
        {"a blank first line", "\n" + kLine1 + "\nL 1,2\n", "L1 ", 3, "nine"},
        {"empty", "", "", 0, ""},
        {"only ends", "\n\n\r", "", 0, ""},
        {"colour", kLine1 + "\n" + kLabel + "\n\nL 1,2,3,4,5,6,256,0,0\n" + kLine2, "L1 PCamp_Fire ", 4, "seventh"},
        {"eight fields", kLine1 + "\n" + kLabel + "\n\nL 1,2,3,4,5,6,0,0\n" + kLine2, "L1 PCamp_Fire ", 4, "nine"},
        {"no fields", kLine1 + "\n" + kLabel + "\n\nL \n" + kLine2, "L1 PCamp_Fire ", 4, "first"},
        {"not a number", kLine1 + "\nL 1,2,zero,4,5,6,0,0,0\n" + kLabel, "L1 ", 2, "third"},
        {"size", kLine1 + "\n" + kLabel + "\nP 1,2,3,0,0,0,40000,Big\n" + kLine2, "L1 PCamp_Fire ", 3, "seventh"},
        {"seven fields", "P 1,2,3,0,0,0,1\n" + kLine2, "", 1, "eight"},
        {"label colour", kLine1 + "\nP 1,2,3,0,256,0,1,x\n", "L1 ", 2, "fifth"},
        {"long skipped line", kLine1 + "\n# a note longer than a read or two\n\nL 1,2\n", "L1 ", 4, "nine"},
        {"NUL", QByteArray("L 1,2,3") + '\0' + ",4,5,6,0,0,0", "", 1, "third"},
        {"LF CR ends two lines", kLine1 + "\n\r" + kLine2 + "\n\rL 1,2", "L1 L2 ", 5, "nine"},
        {"CR CR LF ends two lines", kLine1 + "\r\r\nL 1,2\r\n" + kLine2, "L1 ", 3, "nine"},
        {"lone ends", kLine1 + "\r\n\rL 1,2\r\n" + kLine2, "L1 ", 3, "nine"},
    };
    for (const auto& c : cases) {
        for (const qint64 step : {0, 1, 2, 3, 7, 1 << 30}) {
            MapDocument doc;
            const ReadResult r = read(c.text, doc, step);
            EXPECT_EQ(summary(doc), c.records) << c.name << " in steps of " << step;
            EXPECT_EQ(r.stoppedAtLine, c.stoppedAt) << c.name << " in steps of " << step;
            EXPECT_NE(r.reason.find(c.reason), std::string::npos) << c.name << ": " << r.reason;
            EXPECT_TRUE(r.opened && r.linesAdded == doc.lineCount() && r.labelsAdded == doc.labelCount()) << c.name;
            for (const MapLine& l : doc.lines())
                EXPECT_TRUE(l.layer == 2 && l.p1.sx == 3 * l.p1.x && l.p2.sy == 3 * l.p2.y) << c.name;
            for (const MapLabel& t : doc.labels())
                EXPECT_TRUE(t.layer == 2 && t.size == 2 && t.pos.sx == 3 * t.pos.x && t.b == 255) << c.name;
        }
    }
}

} // namespace
