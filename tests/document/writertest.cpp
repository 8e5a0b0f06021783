#include "document/mapwriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

// Appends a record given as a whole map text line, "L ..." or "P ...".
void add(MapDocument& doc, std::int16_t layer, const std::string& record)
{
    const std::string_view fields = std::string_view(record).substr(2);
    ASSERT_FALSE(record[0] == 'L' ? doc.addLine(fields, layer, 1) : doc.addLabel(fields, layer, 1)) << record;
}

// The coordinate form is C's "%.7G", with a negative zero written as "0".
std::string reference(float v)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7G", double(v));
    return std::strcmp(text, "-0") == 0 ? "0" : text;
}

// A number as record text that reads back as the same single.
std::string exact(float v)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", double(v));
    return text;
}

float fromBits(std::uint32_t bits)
{
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

TEST(MapWriter, WritesOneLayerLinesFirstEachInDocumentOrder)
{
    MapDocument doc;
    add(doc, 1, "L -10.5, 20, 0, 30.25, 40, 0, 255, 128, 0");
    add(doc, 1, "P 1,2,3,0,0,255,2,Camp Fire");
    add(doc, 2, "L 9,9,9,9,9,9,9,9,9");
    add(doc, 1, "L 1E7,-12345678,0.000015,-0,100000,0.0001,0,0,0");
    add(doc, 3, "P 0,0,0,0,0,0,0,other");
    add(doc, 1, "P -0.5,1e-30,3.4E38,1,2,3,-1,\xe9t\xe9_\x80");
    add(doc, 1, "L 3,0,0,0,0,0,0,0,0");
    EXPECT_EQ(formatLayer(doc, 1),
              "L -10.5,20,0,30.25,40,0,255,128,0\r\n"
              "L 1E+07,-1.234568E+07,1.5E-05,0,100000,0.0001,0,0,0\r\n"
              "L 3,0,0,0,0,0,0,0,0\r\n"
              "P 1,2,3,0,0,255,2,Camp_Fire\r\n"
              "P -0.5,1E-30,3.4E+38,1,2,3,-1,\xe9t\xe9_\x80\r\n");
    EXPECT_EQ(formatLayer(doc, 2), "L 9,9,9,9,9,9,9,9,9\r\n");
    EXPECT_EQ(formatLayer(doc, 0), "");
}

// Hard cases, ties at the seventh and eighth digit, every power of ten and
// its neighbours, and random bit patterns, line by line against "%.7G".
TEST(MapWriter, CoordinatesMatchSevenSignificantDigitsOfC)
{
    std::vector<float> values{0.f,         -0.f,       9.999999e-5f, 9999999.5f,      999999.94f,
                              -1234567.5f, 12345.625f, 1e-45f,       1.17549435e-38f, 3.4028235e38f,
                              16777215.f,  12345665.f, 12345675.f,   16777217.f};
    for (int p = -45; p <= 38; ++p) {
        const float power = std::pow(10.f, float(p));
        values.insert(values.end(), {power, std::nextafter(power, 0.f), std::nextafter(power, 1e38f), -power});
    }
    for (int n = 1000000; n < 8388608; n += 9973)
        values.push_back(float(n) + 0.5f);
    std::mt19937 random(7);
    while (values.size() < 60000)
        if (const float v = fromBits(random()); std::isfinite(v))
            values.push_back(v);

    MapDocument doc;
    std::vector<std::string> expected;
    for (std::size_t i = 0; i + 3 <= values.size(); i += 3) {
        add(doc, 0, "L " + exact(values[i]) + "," + exact(values[i + 1]) + "," + exact(values[i + 2]) + ",0,0,0,1,2,3");
        const MapPoint& p = doc.lines().back().p1;
        expected.push_back("L " + reference(p.x) + "," + reference(p.y) + "," + reference(p.z) + ",0,0,0,1,2,3\r");
    }
    const std::string written = formatLayer(doc, 0);
    std::size_t at = 0;
    for (const std::string& line : expected) {
        const std::size_t end = written.find('\n', at);
        ASSERT_EQ(written.substr(at, end - at), line);
        at = end + 1;
    }
    EXPECT_EQ(at, written.size());
}

TEST(MapWriter, ALabelTextLongerThanAWriteBlockIsWrittenWhole)
{
    MapDocument doc;
    // Past what the growing blocks (64 KB doubling up to 4 MB) hold, so that a
    // full block is written out and the next one starts empty.
    const std::string text = std::string(9'000'000, 'a') + "z";
    add(doc, 0, "P 1,2,3,4,5,6,7," + text);
    EXPECT_TRUE(formatLayer(doc, 0) == "P 1,2,3,4,5,6,7," + text + "\r\n");
}

} // namespace
