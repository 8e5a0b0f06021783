#include "document/mapreader.h"
#include "document/mapwriter.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

MapLine& addLine(MapDocument& doc, std::int16_t layer, const char* fields = "0,0,0,0,0,0,0,0,0")
{
    EXPECT_FALSE(doc.addLine(fields, layer, 1));
    return doc.lines().back();
}

MapLabel& addLabel(MapDocument& doc, std::int16_t layer, const char* fields)
{
    EXPECT_FALSE(doc.addLabel(fields, layer, 1));
    return doc.labels().back();
}

// The reference for the coordinate form: C's "%.7G", with a negative zero as "0".
std::string reference(float v)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7G", double(v));
    return std::strcmp(text, "-0") == 0 ? "0" : text;
}

std::string referenceLine(const MapLine& l)
{
    return "L " + reference(l.p1.x) + "," + reference(l.p1.y) + "," + reference(l.p1.z) + "," + reference(l.p2.x)
        + "," + reference(l.p2.y) + "," + reference(l.p2.z) + "," + std::to_string(l.r) + "," + std::to_string(l.g)
        + "," + std::to_string(l.b) + "\r\n";
}

// A device that takes only so many bytes, like a disk that fills up.
class FullDisk : public QIODevice {
public:
    explicit FullDisk(qint64 room) : m_room(room) { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 n) override
    {
        if (n > m_room) {
            setErrorString(QStringLiteral("No space left on device"));
            return -1;
        }
        m_room -= n;
        return n;
    }

private:
    qint64 m_room;
};

} // namespace

TEST(MapWriter, WritesTheFormatsOfBothRecordKinds)
{
    MapDocument doc;
    addLine(doc, 0, "-10.5, 20, 0, 30.25, 40, 0, 255, 128, 0");
    addLabel(doc, 0, "1,2,3,0,0,255,2,Camp Fire");
    addLine(doc, 0, "1E7,-12345678,0.000015,-0,100000,0.0001,0,0,0");
    addLabel(doc, 0, "-0.5,1e-30,3.4E38,1,2,3,-1,\xe9t\xe9_\x80");
    EXPECT_EQ(formatLayer(doc, 0),
              "L -10.5,20,0,30.25,40,0,255,128,0\r\n"
              "L 1E+07,-1.234568E+07,1.5E-05,0,100000,0.0001,0,0,0\r\n"
              "P 1,2,3,0,0,255,2,Camp_Fire\r\n"
              "P -0.5,1E-30,3.4E+38,1,2,3,-1,\xe9t\xe9_\x80\r\n");
}

TEST(MapWriter, WritesOneLayerLinesFirstEachInDocumentOrder)
{
    MapDocument doc;
    addLine(doc, 1, "1,0,0,0,0,0,0,0,0");
    addLabel(doc, 1, "0,0,0,0,0,0,0,first");
    addLine(doc, 2, "9,9,9,9,9,9,9,9,9");
    addLine(doc, 1, "2,0,0,0,0,0,0,0,0");
    addLabel(doc, 3, "0,0,0,0,0,0,0,other");
    addLabel(doc, 1, "0,0,0,0,0,0,0,second");
    addLine(doc, 1, "3,0,0,0,0,0,0,0,0");
    EXPECT_EQ(formatLayer(doc, 1),
              "L 1,0,0,0,0,0,0,0,0\r\n"
              "L 2,0,0,0,0,0,0,0,0\r\n"
              "L 3,0,0,0,0,0,0,0,0\r\n"
              "P 0,0,0,0,0,0,0,first\r\n"
              "P 0,0,0,0,0,0,0,second\r\n");
    EXPECT_EQ(formatLayer(doc, 2), "L 9,9,9,9,9,9,9,9,9\r\n");
    EXPECT_EQ(formatLayer(doc, 0), "");
}

// The coordinate form against "%.7G": chosen hard cases, ties that round to
// even, every power of ten and its neighbours, and random bit patterns.
TEST(MapWriter, CoordinatesMatchSevenSignificantDigitsOfC)
{
    std::vector<float> values{0.f, -0.f, 1.f, -1.f, 0.1f, 1e-4f, 9.999999e-5f, 1e7f, 9999999.f, 9999999.5f,
                              -1234567.5f, 1234568.5f, 12345.625f, 0.3f, 2.5f, 1e-45f, 1.17549435e-38f,
                              3.4028235e38f, -3.4028235e38f, 16777217.f, 123456789.f, 0.00012345678f};
    for (int p = -45; p <= 38; ++p) {
        const float power = std::pow(10.f, float(p));
        values.insert(values.end(), {power, std::nextafter(power, 0.f), std::nextafter(power, 1e38f), -power});
    }
    for (int n = 1000000; n < 8388608; n += 997)
        values.push_back(float(n) + 0.5f); // an exact tie at the eighth digit
    std::mt19937 random(7);
    while (values.size() < 200000) {
        const std::uint32_t bits = random();
        float v;
        std::memcpy(&v, &bits, sizeof v);
        if (std::isfinite(v))
            values.push_back(v);
    }

    MapDocument doc;
    std::string expected;
    for (std::size_t i = 0; i + 6 <= values.size(); i += 6) {
        MapLine& l = addLine(doc, 0);
        l.p1 = {values[i], values[i + 1], values[i + 2]};
        l.p2 = {values[i + 3], values[i + 4], values[i + 5]};
        l.r = std::uint8_t(i), l.g = std::uint8_t(i / 3), l.b = 255;
        expected += referenceLine(l);
    }
    const std::string written = formatLayer(doc, 0);
    ASSERT_EQ(written.size(), expected.size());
    // Compared line by line, so that a failure names the values.
    std::size_t at = 0;
    while (at < expected.size()) {
        const std::size_t end = expected.find('\n', at) + 1;
        ASSERT_EQ(written.substr(at, end - at), expected.substr(at, end - at));
        at = end;
    }
}

TEST(MapWriter, WhatIsWrittenReadsBackToTheSameRecords)
{
    MapDocument doc;
    std::mt19937 random(11);
    std::uniform_real_distribution<float> coord(-30000, 30000);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int i = 0; i < 500; ++i) {
        MapLine& l = addLine(doc, 2);
        l.p1 = {coord(random), coord(random) * 1e-6f, coord(random) * 1e6f};
        l.p2 = {coord(random), coord(random), -0.f};
        l.r = std::uint8_t(byte(random)), l.g = std::uint8_t(byte(random)), l.b = std::uint8_t(byte(random));
        if (i % 3 == 0) {
            MapLabel& t = addLabel(doc, 2, "0,0,0,0,0,0,0,x");
            t.pos = {coord(random), coord(random), coord(random)};
            t.size = std::int16_t(byte(random) * 257 - 32768);
            t.text = "Label_" + std::to_string(i) + "_\xe4";
        }
    }
    QByteArray bytes = QByteArray::fromStdString(formatLayer(doc, 2));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    MapDocument back;
    const ReadResult read = readMapRecords(device, back, 2, 1);
    ASSERT_EQ(read.stoppedAtLine, 0u) << read.reason;
    ASSERT_EQ(back.lineCount(), doc.lineCount());
    ASSERT_EQ(back.labelCount(), doc.labelCount());

    // Coordinates come back as the nearest single to their 7-digit text.
    const auto same = [](const MapPoint& a, const MapPoint& b) {
        const auto kept = [](float v) { return std::strtof(reference(v).c_str(), nullptr); };
        return kept(a.x) == b.x && kept(a.y) == b.y && kept(a.z) == b.z;
    };
    for (std::size_t i = 0; i < doc.lineCount(); ++i) {
        const MapLine& a = doc.lines()[i];
        const MapLine& b = back.lines()[i];
        EXPECT_TRUE(same(a.p1, b.p1) && same(a.p2, b.p2)) << i;
        EXPECT_TRUE(a.r == b.r && a.g == b.g && a.b == b.b && b.layer == 2) << i;
    }
    for (std::size_t i = 0; i < doc.labelCount(); ++i) {
        const MapLabel& a = doc.labels()[i];
        const MapLabel& b = back.labels()[i];
        EXPECT_TRUE(same(a.pos, b.pos)) << i;
        EXPECT_TRUE(a.r == b.r && a.g == b.g && a.b == b.b && a.size == b.size && a.text == b.text) << i;
    }
    // Once cut to 7 digits, a layer writes back to exactly the same text.
    EXPECT_EQ(formatLayer(back, 2), bytes.toStdString());
}

TEST(MapWriter, ALongLabelTextIsWrittenWhole)
{
    MapDocument doc;
    MapLabel& t = addLabel(doc, 0, "1,2,3,4,5,6,7,x");
    t.text = std::string(9'000'000, 'a') + "z";
    const std::string text = formatLayer(doc, 0);
    EXPECT_EQ(text, "P 1,2,3,4,5,6,7," + t.text + "\r\n");
}

TEST(MapWriter, AFailedWriteIsReportedWithItsReason)
{
    MapDocument doc;
    for (int i = 0; i < 100000; ++i)
        addLine(doc, 0, "1.5,2.5,3.5,4.5,5.5,6.5,7,8,9");
    FullDisk disk(1000);
    const WriteResult result = writeLayerRecords(disk, doc, 0);
    EXPECT_FALSE(result.ok());
    EXPECT_EQ(result.error, QStringLiteral("No space left on device"));
}

TEST(MapWriter, ReplacesTheFileAndRefusesPathsItCannotCreate)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("layer.txt"));
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("L 9,9,9,9,9,9,9,9,9\r\nP 1,1,1,1,1,1,1,old\r\n");
    old.close();

    MapDocument doc;
    addLine(doc, 0, "1,2,3,4,5,6,7,8,9");
    const WriteResult result = writeLayerFile(path, doc, 0);
    ASSERT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_EQ(result.bytes, 21u);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), QByteArray("L 1,2,3,4,5,6,7,8,9\r\n"));

    // A folder that does not exist, or a name that is a folder: nothing is made.
    for (const QString& bad : {dir.filePath(QStringLiteral("missing/layer.txt")), dir.path()}) {
        const WriteResult failed = writeLayerFile(bad, doc, 0);
        EXPECT_FALSE(failed.ok()) << bad.toStdString();
    }
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("missing"))));
}
