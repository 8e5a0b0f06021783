#include "document/mapdocument.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace plotwell;

namespace {

// Every field of a record in the order of its layout.
std::vector<float> fieldsOf(const MapLine& l)
{
    return {l.p1.x,  l.p1.y,     l.p1.z,     l.p1.sx,    l.p1.sy,           l.p2.x,        l.p2.y, l.p2.z, l.p2.sx,
            l.p2.sy, float(l.r), float(l.g), float(l.b), float(l.selected), float(l.layer)};
}

// Appends a line and a label whose first coordinate is x.
void addBoth(MapDocument& doc, int x, std::int16_t layer, float scale = 1)
{
    ASSERT_FALSE(doc.addLine(std::to_string(x) + ",0,0,1,1,1,0,0,0", layer, scale));
    ASSERT_FALSE(doc.addLabel(std::to_string(x) + ",0,0,0,0,0,1,Here", layer, scale));
}

// The first coordinate of every line, then of every label.
std::string xsOf(const MapDocument& doc)
{
    std::string s;
    for (const MapLine& l : doc.lines())
        s += std::to_string(int(l.p1.x)) + " ";
    s += "|";
    for (const MapLabel& t : doc.labels())
        s += " " + std::to_string(int(t.pos.x));
    return s;
}

TEST(MapDocument, LayerZeroMeansTheActiveLayerAndIsWrittenBack)
{
    const struct {
        std::int16_t active, given, stored;
        bool good;
    } cases[] = {{2, 0, 2, true}, {0, 0, 0, true}, {3, 0, 3, true},
                 {2, 1, 1, true}, {0, 3, 3, true}, {2, 0, 2, false}}; // replaced even when the record is refused
    for (const auto& c : cases) {
        MapDocument doc;
        doc.activeLayer = c.active;
        std::int16_t lineLayer = c.given, labelLayer = c.given;
        EXPECT_EQ(!doc.addLine(c.good ? "1,2,3,4,5,6,255,0,0" : "1,2,3", lineLayer, 1), c.good);
        EXPECT_EQ(!doc.addLabel(c.good ? "1,2,3,0,0,255,2,Here" : "1,2,3", labelLayer, 1), c.good);
        EXPECT_EQ(lineLayer, c.stored);
        EXPECT_EQ(labelLayer, c.stored);
        EXPECT_EQ(doc.lineCount() + doc.labelCount(), c.good ? 2u : 0u);
        EXPECT_TRUE(!c.good || (doc.lines()[0].layer == c.stored && doc.labels()[0].layer == c.stored));
    }
}

// What a record read: its colour and, for a label, its size and text.
std::string readOf(const MapLine& l)
{
    return std::to_string(l.r) + " " + std::to_string(l.g) + " " + std::to_string(l.b);
}
std::string readOf(const MapLabel& t)
{
    return std::to_string(t.r) + " " + std::to_string(t.g) + " " + std::to_string(t.b) + " " + std::to_string(t.size)
        + " " + t.text;
}

TEST(MapDocument, RecordTextsAreReadFieldByFieldOrRefusedWhole)
{
    const struct {
        bool line;
        const char* fields;
        const char* read; // nullptr: refused, and nothing is counted
    } cases[] = {
        {true, "1,2,3,4,5,6,255,0,0,99,98", "255 0 0"}, // fields beyond the ninth are ignored
        {true, "1,2,3,4,5,6,255,0,0,not a number", "255 0 0"},
        {true, "1,2,3,4,5,6, 12.5,13.5 , 254.5", "12 14 254"}, // half to even
        {true, "1,2,3,4,5,6,0,0,", nullptr},
        {false, "1,2,3,0,0,255, 12.5,  Camp Fire  ", "0 0 255 12 Camp_Fire"},
        {false, "1,2,3,0,0,255,13.5 ,Gate,North", "0 0 255 14 Gate"}, // only the eighth field is the text
        {false, "1,2,3,0,0,255,2,a  b", "0 0 255 2 a__b"},
        {false, "1,2,3,0,0,255,2,   ", "0 0 255 2 "},
        {false, "1,2,3,0,0,255,2,\tA B\t", "0 0 255 2 \tA_B\t"}, // only blanks count
        {false, "1,2,3,0,0,255,2,Tower \r\nP 4,5,6,0,0,0,1,Two", "0 0 255 2 Tower"}, // no line break is stored
        {false, "1,2,3,0,0,255,2,\nTwo", "0 0 255 2 "},
        {false, "1,2,3,0,0,0,40000,Here", nullptr},
        {false, "1,2,3,0,0,256,1,Here", nullptr},
    };
    MapDocument doc;
    for (const auto& c : cases) {
        std::int16_t layer = 1;
        const std::size_t before = doc.lineCount() + doc.labelCount();
        const RecordError error = c.line ? doc.addLine(c.fields, layer, 1) : doc.addLabel(c.fields, layer, 1);
        EXPECT_EQ(!error, c.read != nullptr) << c.fields;
        ASSERT_EQ(doc.lineCount() + doc.labelCount(), before + (c.read ? 1 : 0)) << c.fields;
        if (c.read) {
            EXPECT_EQ(c.line ? readOf(doc.lines().back()) : readOf(doc.labels().back()), c.read) << c.fields;
        }
    }
}

TEST(MapDocument, RecordsTakenOutGoBackWhereTheyWereWithTheirSelection)
{
    MapDocument doc;
    const std::int16_t layers[] = {0, 1, 2, 1, 3};
    for (int i = 0; i < 5; ++i)
        addBoth(doc, i, layers[i]);
    doc.setLineSelected(1, true);
    const MapLine kept = doc.lines()[2];
    TakenRecords layer1 = doc.takeRecordsWhere([](std::int16_t layer, bool) { return layer == 1; });
    EXPECT_FALSE(doc.hasSelection());
    EXPECT_EQ(fieldsOf(doc.lines()[1]), fieldsOf(kept)) << "the others keep every field";
    EXPECT_TRUE(doc.takeRecordsWhere([](std::int16_t layer, bool) { return layer == 1; }).empty());
    TakenRecords last = doc.takeRecordsFrom(2, 3);
    EXPECT_EQ(xsOf(doc), "0 2 | 0 2 4");
    doc.putBack(last, 2);
    EXPECT_TRUE(doc.lines()[2].p1.sx == 8 && doc.lines()[2].p2.sx == 2) << "put back at the scale of now";
    doc.putBack(layer1, 2);
    EXPECT_EQ(xsOf(doc), "0 1 2 3 4 | 0 1 2 3 4");
    EXPECT_TRUE(doc.lines()[1].selected && doc.selectedCount() == 1);
    doc.takeRecordsAgain(layer1);
    EXPECT_EQ(xsOf(doc), "0 2 4 | 0 2 4");
    doc.keepFirst(2, 1); // as a cancelled load leaves it
    EXPECT_EQ(xsOf(doc), "0 2 | 0");
    EXPECT_EQ(doc.selectedCount(), 0u);
    doc.setLineSelected(0, true);
    doc.keepFirst(1, 0);
    EXPECT_EQ(doc.selectedCount(), 1u);
    TakenRecords all = doc.takeRecordsFrom(0, 0);
    EXPECT_TRUE(xsOf(doc) == "|" && doc.selectedCount() == 0);
    addBoth(doc, 42, 1);
    EXPECT_EQ(xsOf(doc), "42 | 42");
}

TEST(MapDocument, SelectionColourAndScaleChangeOnlyWhatTheyName)
{
    MapDocument doc;
    for (int i = 0; i < 3; ++i)
        addBoth(doc, i + 1, 1);
    doc.setLineSelected(1, true);
    doc.setLabelSelected(2, true);
    doc.setLineColor(1, {9, 8, 7});
    doc.setLabelColor(2, {9, 8, 7});
    const auto colours = [&doc] {
        std::string s;
        for (const MapLine& l : doc.lines())
            s += std::to_string(l.r + l.g + l.b) + " ";
        for (const MapLabel& t : doc.labels())
            s += std::to_string(t.r + t.g + t.b) + " ";
        return s;
    };
    EXPECT_EQ(colours(), "0 24 0 0 0 24 ");
    doc.clearSelection();
    EXPECT_EQ(colours(), "0 24 0 0 0 24 ");

    doc.rescale(2.5f);
    EXPECT_EQ(doc.lines()[2].p1.sx, 7.5f);
    EXPECT_EQ(doc.lines()[2].p2.sy, 2.5f);
    EXPECT_EQ(doc.labels()[1].pos.sx, 5.0f);
}

TEST(MapDocument, RemovalsAreCountedOnlyWhenIndicesChange)
{
    MapDocument doc;
    doc.takeRecordsFrom(0, 0);
    doc.takeRecordsWhere([](std::int16_t, bool) { return true; });
    EXPECT_EQ(doc.removals(), 0u);
    addBoth(doc, 1, 1);
    addBoth(doc, 2, 2);
    EXPECT_EQ(doc.removals(), 0u) << "appending keeps every index";
    doc.takeRecordsWhere([](std::int16_t layer, bool) { return layer == 3; });
    EXPECT_EQ(doc.removals(), 0u);
    TakenRecords taken = doc.takeRecordsWhere([](std::int16_t layer, bool) { return layer == 1; });
    doc.putBack(taken, 1);
    doc.takeRecordsFrom(1, 0);
    EXPECT_EQ(xsOf(doc), "1 |");
    doc.takeRecordsFrom(0, 0);
    EXPECT_EQ(doc.removals(), 4u);
}

} // namespace
