#include "document/mapdocument.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace plotwell;

namespace {

std::vector<int> lineLayers(const MapDocument& doc)
{
    std::vector<int> layers;
    for (const MapLine& l : doc.lines())
        layers.push_back(l.layer);
    return layers;
}

std::vector<float> lineXs(const MapDocument& doc)
{
    std::vector<float> xs;
    for (const MapLine& l : doc.lines())
        xs.push_back(l.p1.x);
    return xs;
}

std::string lineText(int x) { return std::to_string(x) + ",0,0,1,1,1,0,0,0"; }
std::string labelText(int x) { return std::to_string(x) + ",0,0,0,0,0,1,Here"; }

TEST(MapDocument, LineFieldsGoToEndsThenColour)
{
    MapDocument doc;
    std::int16_t layer = 1;
    ASSERT_FALSE(doc.addLine("1,2,3,4,5,6,7,8,9", layer, 2));
    ASSERT_EQ(doc.lineCount(), 1u);
    const MapLine& l = doc.lines()[0];
    EXPECT_EQ(l.p1.x, 1);
    EXPECT_EQ(l.p1.y, 2);
    EXPECT_EQ(l.p1.z, 3);
    EXPECT_EQ(l.p2.x, 4);
    EXPECT_EQ(l.p2.y, 5);
    EXPECT_EQ(l.p2.z, 6);
    EXPECT_EQ(l.r, 7);
    EXPECT_EQ(l.g, 8);
    EXPECT_EQ(l.b, 9);
    EXPECT_EQ(l.layer, 1);
    EXPECT_FALSE(l.selected);
    // The new points are scaled at once.
    EXPECT_EQ(l.p1.sx, 2);
    EXPECT_EQ(l.p1.sy, 4);
    EXPECT_EQ(l.p2.sx, 8);
    EXPECT_EQ(l.p2.sy, 10);
}

TEST(MapDocument, LabelFieldsGoToAnchorColourSizeAndText)
{
    MapDocument doc;
    std::int16_t layer = 3;
    ASSERT_FALSE(doc.addLabel("1, 2, 3, 4, 5, 6, -7, Camp Fire", layer, 0.5f));
    ASSERT_EQ(doc.labelCount(), 1u);
    const MapLabel& t = doc.labels()[0];
    EXPECT_EQ(t.pos.x, 1);
    EXPECT_EQ(t.pos.y, 2);
    EXPECT_EQ(t.pos.z, 3);
    EXPECT_EQ(t.r, 4);
    EXPECT_EQ(t.g, 5);
    EXPECT_EQ(t.b, 6);
    EXPECT_EQ(t.size, -7);
    EXPECT_EQ(t.text, "Camp_Fire");
    EXPECT_EQ(t.layer, 3);
    EXPECT_FALSE(t.selected);
    EXPECT_EQ(t.pos.sx, 0.5f);
    EXPECT_EQ(t.pos.sy, 1);
}

TEST(MapDocument, LayerZeroMeansTheActiveLayerAndIsWrittenBack)
{
    struct Case {
        std::int16_t active;
        std::int16_t given;
        std::int16_t stored;
    };
    const Case cases[] = {{2, 0, 2}, {0, 0, 0}, {3, 0, 3}, {2, 1, 1}, {0, 3, 3}};
    for (const auto& c : cases) {
        MapDocument doc;
        doc.activeLayer = c.active;
        std::int16_t lineLayer = c.given;
        ASSERT_FALSE(doc.addLine("1,2,3,4,5,6,255,0,0", lineLayer, 1));
        EXPECT_EQ(lineLayer, c.stored);
        EXPECT_EQ(doc.lines().at(0).layer, c.stored);

        std::int16_t labelLayer = c.given;
        ASSERT_FALSE(doc.addLabel("1,2,3,0,0,255,2,Here", labelLayer, 1));
        EXPECT_EQ(labelLayer, c.stored);
        EXPECT_EQ(doc.labels().at(0).layer, c.stored);
    }
}

TEST(MapDocument, LayerZeroIsReplacedEvenWhenTheRecordFails)
{
    MapDocument doc;
    doc.activeLayer = 2;
    for (const char* text : {"1,2,3", "1,2,3,4,5,6,256,0,0"}) {
        std::int16_t layer = 0;
        EXPECT_TRUE(doc.addLine(text, layer, 1));
        EXPECT_EQ(layer, 2) << text;
    }
    EXPECT_EQ(doc.lineCount(), 0u);
}

TEST(MapDocument, FieldsBeyondTheRecordAreIgnored)
{
    MapDocument doc;
    std::int16_t layer = 1;
    ASSERT_FALSE(doc.addLine("1,2,3,4,5,6,255,0,0,99,98", layer, 1));
    ASSERT_FALSE(doc.addLine("1,2,3,4,5,6,255,0,0,not a number", layer, 1));
    ASSERT_FALSE(doc.addLabel("1,2,3,0,0,255,2,Gate,North", layer, 1));
    ASSERT_EQ(doc.lineCount(), 2u);
    for (const MapLine& l : doc.lines()) {
        EXPECT_EQ(l.r, 255);
        EXPECT_EQ(l.g, 0);
        EXPECT_EQ(l.b, 0);
    }
    EXPECT_EQ(doc.labels().at(0).text, "Gate");
}

TEST(MapDocument, FieldsRoundHalfToEven)
{
    MapDocument doc;
    std::int16_t layer = 1;
    ASSERT_FALSE(doc.addLine("1,2,3,4,5,6, 12.5,13.5 , 254.5", layer, 1));
    EXPECT_EQ(doc.lines()[0].r, 12);
    EXPECT_EQ(doc.lines()[0].g, 14);
    EXPECT_EQ(doc.lines()[0].b, 254);
    ASSERT_FALSE(doc.addLabel("1,2,3,0,0,0, 12.5,A", layer, 1));
    ASSERT_FALSE(doc.addLabel("1,2,3,0,0,0,13.5 ,B", layer, 1));
    EXPECT_EQ(doc.labels()[0].size, 12);
    EXPECT_EQ(doc.labels()[1].size, 14);
}

TEST(MapDocument, BadRecordsAreRefusedAndNotCounted)
{
    const char* const badLines[] = {
        "1,2,3,4,5,6,256,0,0", // colour above 255
        "1,2,3,4,5,6,0,-1,0",  // colour below 0
        "1,2,3,4,5,6,0,0",     // eight fields
        "",
        "1,2,x,4,5,6,0,0,0",   // coordinate not a number
        "1,2,3,4,5,1e39,0,0,0", // beyond the single range
        "1,2,3,4,5,6,0,0,inf",
        "1,2,3,4,5,6,0,0,",
    };
    const char* const badLabels[] = {
        "1,2,3,0,0,0,40000,Here", // size beyond 16 bits
        "1,2,3,0,0,0,-32769,Here",
        "1,2,3,0,0,256,1,Here",
        "1,2,3,0,0,0,1", // seven fields
        "1,2,nan,0,0,0,1,Here",
        "1,2,3,0,0,0,0x10,Here",
    };
    MapDocument doc;
    std::int16_t layer = 1;
    ASSERT_FALSE(doc.addLine(lineText(5), layer, 1));
    ASSERT_FALSE(doc.addLabel(labelText(5), layer, 1));
    for (const char* text : badLines)
        EXPECT_TRUE(doc.addLine(text, layer, 1)) << text;
    for (const char* text : badLabels)
        EXPECT_TRUE(doc.addLabel(text, layer, 1)) << text;
    EXPECT_EQ(doc.lineCount(), 1u);
    EXPECT_EQ(doc.labelCount(), 1u);
    EXPECT_EQ(doc.lines()[0].p1.x, 5);
}

TEST(MapDocument, LabelTextKeepsOnlyTheEighthField)
{
    struct Case {
        const char* field;
        const char* text;
    };
    const Case cases[] = {
        {"Camp Fire", "Camp_Fire"},
        {"  Camp Fire  ", "Camp_Fire"},
        {"Gate,North", "Gate"},
        {"North,Gate", "North"},
        {"a  b", "a__b"},
        {"Already_Joined", "Already_Joined"},
        {"", ""},
        {"   ", ""},
        {" to the  Zone ", "to_the__Zone"},
        {"\tA B\t", "\tA_B\t"}, // only blanks count
    };
    for (const auto& c : cases) {
        MapDocument doc;
        std::int16_t layer = 1;
        ASSERT_FALSE(doc.addLabel(std::string("1,2,3,0,0,255,2,") + c.field, layer, 1)) << c.field;
        EXPECT_EQ(doc.labels().at(0).text, c.text) << '"' << c.field << '"';
    }
}

TEST(MapDocument, RemovingALayerKeepsTheOrderOfTheOthers)
{
    MapDocument doc;
    const std::int16_t layers[] = {0, 1, 2, 1, 3};
    for (int i = 0; i < 5; ++i) {
        std::int16_t layer = layers[i];
        doc.activeLayer = layer; // so that layer 0 stays 0
        ASSERT_FALSE(doc.addLine(lineText(i), layer, 1));
        ASSERT_FALSE(doc.addLabel(labelText(i), layer, 1));
    }
    EXPECT_TRUE(doc.removeRecordsWhere([](std::int16_t layer, bool) { return layer == 1; }));
    EXPECT_EQ(lineLayers(doc), (std::vector<int>{0, 2, 3}));
    EXPECT_EQ(lineXs(doc), (std::vector<float>{0, 2, 4}));
    ASSERT_EQ(doc.labelCount(), 3u);
    EXPECT_EQ(doc.labels()[0].pos.x, 0);
    EXPECT_EQ(doc.labels()[1].pos.x, 2);
    EXPECT_EQ(doc.labels()[2].pos.x, 4);
    EXPECT_EQ(doc.labels()[2].layer, 3);
}

TEST(MapDocument, RemovingAnEmptyLayerLeavesTheRecordsUntouched)
{
    MapDocument doc;
    std::int16_t layer = 2;
    ASSERT_FALSE(doc.addLine(lineText(1), layer, 3));
    ASSERT_FALSE(doc.addLabel(labelText(2), layer, 3));
    doc.lines()[0].selected = true;
    EXPECT_FALSE(doc.removeRecordsWhere([](std::int16_t l, bool) { return l == 1; }));
    ASSERT_EQ(doc.lineCount(), 1u);
    ASSERT_EQ(doc.labelCount(), 1u);
    EXPECT_TRUE(doc.lines()[0].selected);
    EXPECT_EQ(doc.lines()[0].p1.sx, 3);
}

TEST(MapDocument, RemovingTheSelectionKeepsTheRestWithAllTheirFields)
{
    MapDocument doc;
    std::int16_t layer = 1;
    for (int i = 0; i < 6; ++i) {
        ASSERT_FALSE(doc.addLine(lineText(i), layer, 2));
        ASSERT_FALSE(doc.addLabel(labelText(i), layer, 2));
    }
    for (int i : {0, 2, 3}) {
        doc.lines()[i].selected = true;
        doc.labels()[5 - i].selected = true;
    }
    doc.labels()[0].selected = true;
    doc.lines()[5].selected = false;
    EXPECT_TRUE(doc.removeRecordsWhere([](std::int16_t, bool selected) { return selected; }));
    EXPECT_EQ(lineXs(doc), (std::vector<float>{1, 4, 5}));
    ASSERT_EQ(doc.labelCount(), 2u);
    EXPECT_EQ(doc.labels()[0].pos.x, 1);
    EXPECT_EQ(doc.labels()[1].pos.x, 4);
    EXPECT_EQ(doc.lines()[1].p1.sx, 8);
}

TEST(MapDocument, AfterClearingAllANewRecordGoesToIndexZero)
{
    MapDocument doc;
    std::int16_t layer = 1;
    for (int i = 0; i < 3; ++i) {
        ASSERT_FALSE(doc.addLine(lineText(i), layer, 1));
        ASSERT_FALSE(doc.addLabel(labelText(i), layer, 1));
    }
    doc.layerFile[1] = QStringLiteral("kept.txt");
    doc.clearRecords();
    EXPECT_EQ(doc.lineCount(), 0u);
    EXPECT_EQ(doc.labelCount(), 0u);
    EXPECT_TRUE(doc.lines().empty());
    EXPECT_EQ(doc.layerFile[1], QStringLiteral("kept.txt"));
    ASSERT_FALSE(doc.addLine(lineText(42), layer, 1));
    ASSERT_FALSE(doc.addLabel(labelText(43), layer, 1));
    ASSERT_EQ(doc.lineCount(), 1u);
    EXPECT_EQ(doc.lines()[0].p1.x, 42);
    EXPECT_EQ(doc.labels()[0].pos.x, 43);
}

TEST(MapDocument, RemovingTheLastRecordDropsOnlyThatOne)
{
    MapDocument doc;
    std::int16_t layer = 1;
    doc.removeLastLine();
    doc.removeLastLabel();
    for (int i = 0; i < 3; ++i) {
        ASSERT_FALSE(doc.addLine(lineText(i), layer, 1));
        ASSERT_FALSE(doc.addLabel(labelText(i), layer, 1));
    }
    doc.removeLastLine();
    doc.removeLastLabel();
    doc.removeLastLabel();
    EXPECT_EQ(lineXs(doc), (std::vector<float>{0, 1}));
    ASSERT_EQ(doc.labelCount(), 1u);
    EXPECT_EQ(doc.labels()[0].pos.x, 0);
}

} // namespace
