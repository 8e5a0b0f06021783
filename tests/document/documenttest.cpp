#include "document/mapdocument.h"

#include <gtest/gtest.h>

using namespace plotwell;

TEST(MapDocument, LayerZeroMeansTheActiveLayer)
{
    MapDocument doc;
    doc.activeLayer = 2;
    std::int16_t layer = 0;
    ASSERT_FALSE(doc.addLine("1,2,3,4,5,6,255,0,0", layer, 1));
    EXPECT_EQ(layer, 2);
    EXPECT_EQ(doc.lines().at(0).layer, 2);
}
