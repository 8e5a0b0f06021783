#include "tools/selection.h"
#include "editor/mapevents.h"
#include "view/zoom.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// The indices of the selected lines or labels.
template <typename Records> std::vector<std::size_t> selectedOf(const Records& records)
{
    std::vector<std::size_t> out;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (records[i].selected)
            out.push_back(i);
    return out;
}

// A click at world (x, y) with the view at scale 1 and no offset, toggling.
bool clickAt(Editor& e, float x, float y, bool toggle = true)
{
    return e.selection.hitTestAt(e.doc, e.view, e.display, x, y, e.view.currentZ, toggle);
}

TEST(HitTest, OneLineAgainstPointsOnItsBorders)
{
    const struct {
        float x1, y1, x2, y2;
        float px, py;
        bool hit;
    } cases[] = {
        // A vertical line: within 2 across, between its ends along.
        {10, 0, 10, 50, 11.5f, 25, true},
        {10, 0, 10, 50, 10, 50, true},
        {10, 0, 10, 50, 10, 51, false},
        {10, 0, 10, 50, 12, 25, false},
        {10, 0, 10, 50, 8.01f, 0, true},
        // A horizontal line.
        {0, 5, 30, 5, 15, 6.9f, true},
        {0, 5, 30, 5, 15, 7, false},
        {0, 5, 30, 5, 31, 5, false},
        {0, 5, 30, 5, 0, 3.01f, true},
        // A diagonal: the slope from the first end must differ by less than 2, inside the box.
        {0, 0, 100, 100, 50, 90, true},
        {0, 0, 100, 100, 10, 40, false},
        {0, 0, 100, 100, 10, 30, false}, // the slopes differ by exactly 2
        {0, 0, 100, 100, 101, 101, false},
        {100, 100, 0, 0, 50, 50, true},
        {0, 0, 100, 100, 100, 100, true}, // exactly on either end, whichever way the line runs
        {100, 100, 0, 0, 0, 0, true},
        {100, 100, 0, 0, 100, 100, true},
        {10, 50, 10, 0, 11, 0, true},
        {30, 5, 0, 5, 0, 6, true},
        // On the vertical through the first end: within 2 of that end only.
        {0, 0, 100, 100, 0, 1.9f, true},
        {0, 0, 100, 100, 0, 2, false},
        {0, 0, 100, 100, 0, 50, false},
        // A line whose ends coincide is never hit.
        {5, 5, 5, 5, 5, 5, false},
        {5, 5, 5, 5, 5.5f, 5.5f, false},
    };
    for (const auto& c : cases) {
        MapLine line;
        line.p1 = {c.x1, c.y1};
        line.p2 = {c.x2, c.y2};
        EXPECT_EQ(lineHitAt(line, c.px, c.py), c.hit)
            << c.x1 << "," << c.y1 << " - " << c.x2 << "," << c.y2 << " at " << c.px << "," << c.py;
    }
}

// The tolerance of 2 is in world units, whatever the scale and offsets.
TEST(HitTest, AClickIsTakenToTheWorldFirst)
{
    const struct {
        float scale, offsetX, offsetY, worldY;
        bool hit;
    } cases[] = {{2.5f, 300, -150, 51.9f, true},
                 {2.5f, 300, -150, 52.1f, false},
                 {0.5f, -40, 70, 48.1f, true},
                 {0.5f, -40, 70, 47.9f, false},
                 {1, 0, 0, 51.9f, true}};
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.view.currentScale = c.scale;
        e.view.offsetX = c.offsetX;
        e.view.offsetY = c.offsetY;
        addTestLine(e, 0, 50, 0, 100, 50, 0, kBlue);
        const float x = 70 * c.scale + c.offsetX, y = c.worldY * c.scale + c.offsetY;
        EXPECT_EQ(e.selection.hitTestAt(e.doc, e.view, e.display, x, y, 0, true), c.hit) << c.scale << " " << c.worldY;
    }
}

TEST(HitTest, APointerDragSelectsAlongItsPathAndDeselectsNothing)
{
    FakeWorld w;
    Editor& e = w.editor;
    for (const float x : {20.f, 40.f, 60.f, 200.f})
        addTestLine(e, x, 0, 0, x, 100, 0, kBlue);
    e.doc.setLineSelected(1, true);
    toolIconClicked(e, ToolId::Pointer);
    mapMouseDown(e, kLeftButton, {10, 50});
    for (float x = 10; x <= 70; x += 1)
        mapMouseMove(e, kLeftButton, {x, 50});
    EXPECT_EQ(selectedOf(e.doc.lines()), (std::vector<std::size_t>{0, 1, 2}));
}

TEST(HitTest, LayersShownKindsAndTheHeightFilter)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.doc.activeLayer = 1;
    addTestLine(e, 0, 0, 0, 100, 0, 0, kBlue, 2); // another layer: still hit
    addTestLine(e, 0, 0, 500, 100, 0, 0, kBlue, 1); // first end far above
    addTestLine(e, 0, 0, 0, 100, 0, 500, kBlue, 1); // second end far above: counts as near
    addTestLabel(e, 50, 1, 0, kBlue, "Here", 1);
    addTestLabel(e, 50, 1, 0, kBlue, "Other", 3); // another layer: never hit
    addTestLabel(e, 51, 0, 1.5f, kBlue, "Close", 1); // within 2 in height
    addTestLabel(e, 49, 0, 3, kBlue, "Above", 1); // 3 above: out with the filter on

    e.display.heightFilterOn = true;
    e.display.heightRange = 100;
    clickAt(e, 50, 0);
    EXPECT_EQ(selectedOf(e.doc.lines()), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(selectedOf(e.doc.labels()), (std::vector<std::size_t>{0, 2}));

    e.doc.clearSelection();
    e.display.heightFilterOn = false;
    e.display.labelsChecked = false;
    clickAt(e, 50, 0);
    EXPECT_EQ(selectedOf(e.doc.lines()), (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_TRUE(selectedOf(e.doc.labels()).empty());

    e.doc.clearSelection();
    e.display.labelsChecked = true;
    e.display.linesChecked = false;
    clickAt(e, 50, 0);
    EXPECT_TRUE(selectedOf(e.doc.lines()).empty());
    EXPECT_EQ(selectedOf(e.doc.labels()), (std::vector<std::size_t>{0, 2, 3}));
}

TEST(SelectBox, SelectsRecordsWithAPointInsideOnTheActiveLayerOnly)
{
    const struct {
        SurfacePoint a, b;
    } drags[] = {{{0, 10}, {100, 70}}, {{100, 70}, {0, 10}}, {{100, 10}, {0, 70}}, {{0, 70}, {100, 10}}};
    for (const auto& d : drags) {
        FakeWorld w;
        Editor& e = w.editor;
        e.view.offsetX = 10; // the rectangle is in surface units, the records in world units
        addTestLine(e, 20, 20, 0, 300, 300, 0, kBlue); // first end inside
        addTestLine(e, 300, 300, 0, 80, 40, 0, kBlue); // second end inside
        addTestLine(e, -50, 30, 0, 200, 30, 0, kBlue); // crosses, both ends outside
        addTestLine(e, 40, 40, 0, 40, 40, 0, kBlue); // degenerate, inside
        addTestLine(e, 30, 30, 0, 31, 31, 0, kBlue, 2); // another layer
        addTestLabel(e, 50, 50, 0, kBlue, "In");
        addTestLabel(e, 50, 50, 0, kBlue, "Elsewhere", 3);
        addTestLabel(e, 95, 50, 0, kBlue, "Beyond"); // world 95 is surface 105
        addTestLabel(e, -10, 10, 0, kBlue, "Corner"); // on the edges: inside
        addTestLabel(e, 90, 70, 0, kBlue, "Corner");
        e.display.linesChecked = false; // the rectangle selects hidden records too
        e.doc.setLabelSelected(2, true); // and clears nothing
        e.selection.showSelectBox(d.a, d.b);
        EXPECT_TRUE(e.selection.box.visible);
        e.selection.selectInBox(e.doc, e.view, e.display);
        EXPECT_EQ(selectedOf(e.doc.lines()), (std::vector<std::size_t>{0, 1, 3}));
        EXPECT_EQ(selectedOf(e.doc.labels()), (std::vector<std::size_t>{0, 2, 3, 4}));
    }
}

// With the height filter on, only records whose (first) height is in range;
// a line taken out leaves nothing behind that the rectangle could select.
TEST(SelectBox, TheHeightFilterAndTheLastLineTakenOut)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.view.currentZ = 100;
    e.display.heightFilterOn = true;
    e.display.heightRange = 20;
    addTestLine(e, 10, 10, 110, 20, 20, 500, kBlue);
    addTestLine(e, 10, 10, 130, 20, 20, 100, kBlue);
    addTestLabel(e, 30, 30, 85, kBlue, "Low");
    addTestLabel(e, 30, 30, 75, kBlue, "Lower");
    addTestLine(e, 40, 40, 100, 50, 50, 100, kBlue);
    e.doc.takeRecordsFrom(2, 2);
    e.selection.showSelectBox({0, 0}, {100, 100});
    e.selection.selectInBox(e.doc, e.view, e.display);
    EXPECT_EQ(selectedOf(e.doc.lines()), (std::vector<std::size_t>{0}));
    EXPECT_EQ(selectedOf(e.doc.labels()), (std::vector<std::size_t>{0}));
    EXPECT_EQ(e.doc.selectedCount(), 2u);
}

// A map large enough for the grid, with lines of every shape: short chains,
// long lines across the map, steep, flat, degenerate and far-off ones.
void addRandomMap(Editor& e, std::mt19937& rng, int count)
{
    std::uniform_real_distribution<float> coord(-3000, 3000), step(-40, 40), unit(0, 1);
    for (int i = 0; i < count; ++i) {
        const float x = coord(rng), y = coord(rng);
        const float kind = unit(rng);
        if (kind < 0.6f)
            addTestLine(e, x, y, 0, x + step(rng), y + step(rng), 0, kBlue);
        else if (kind < 0.7f)
            addTestLine(e, x, y, 0, x + unit(rng) * 3, y + step(rng) * 20, 0, kBlue); // steep
        else if (kind < 0.8f)
            addTestLine(e, x, y, 0, x + step(rng) * 20, y + unit(rng) * 3, 0, kBlue); // flat
        else if (kind < 0.85f)
            addTestLine(e, x, y, 0, coord(rng), coord(rng), 0, kBlue); // long
        else if (kind < 0.9f)
            addTestLine(e, x, y, 0, x, y, 0, kBlue); // degenerate
        else if (kind < 0.92f)
            addTestLine(e, x * 1e6f, y, 0, x * 1e6f + 10, y + 10, 0, kBlue); // far off
        else
            addTestLine(e, std::round(x), std::round(y), 0, std::round(x) + 30, std::round(y), 0, kBlue);
    }
}

// Every line whose plain test says it is hit, by the definition alone.
std::vector<std::size_t> plainWalk(const MapDocument& doc, float x, float y)
{
    std::vector<std::size_t> hits;
    for (std::size_t i = 0; i < doc.lineCount(); ++i)
        if (lineHitAt(doc.lines()[i], x, y))
            hits.push_back(i);
    return hits;
}

// Points near the lines' ends and borders, where rounding matters, and anywhere.
std::vector<std::pair<float, float>> probePoints(const MapDocument& doc, std::mt19937& rng, int count)
{
    std::uniform_real_distribution<float> coord(-3100, 3100), near(-2.5f, 2.5f);
    std::uniform_int_distribution<std::size_t> pick(0, doc.lineCount() - 1);
    std::vector<std::pair<float, float>> points;
    for (int i = 0; i < count; ++i) {
        if (i % 2 == 0) {
            points.emplace_back(coord(rng), coord(rng));
            continue;
        }
        const MapLine& l = doc.lines()[pick(rng)];
        const MapPoint& p = i % 4 == 1 ? l.p1 : l.p2;
        const float dx = i % 8 < 4 ? near(rng) : std::nextafter(2.0f, 3.0f) * (i % 3 == 0 ? 1 : -1);
        points.emplace_back(p.x + dx, p.y + near(rng));
    }
    return points;
}

TEST(HitTest, TheGridFindsExactlyWhatTheWalkOverEveryLineFinds)
{
    FakeWorld w;
    Editor& e = w.editor;
    std::mt19937 rng(17);
    addRandomMap(e, rng, 6000);
    ASSERT_GE(e.doc.lineCount(), LineIndex::kMinLines);

    const auto compare = [&](const char* stage) {
        std::size_t hits = 0;
        std::vector<std::pair<float, float>> points = probePoints(e.doc, rng, 800);
        // A view that overflowed once made such points; they hit nothing.
        for (const float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
            points.insert(points.end(), {{bad, 0}, {0, -bad}, {bad, bad}});
        // The grid's purpose: a click looks at a small part of the map.
        LineIndex index;
        std::size_t looked = 0;
        for (const auto& [x, y] : points)
            index.forCandidates(e.doc, x, y, [&looked](std::size_t) { ++looked; });
        EXPECT_LT(looked / points.size(), e.doc.lineCount() / 20) << stage;
        for (const auto& [x, y] : points) {
            const std::vector<std::size_t> expected = plainWalk(e.doc, x, y);
            e.doc.clearSelection();
            EXPECT_EQ(clickAt(e, x, y), !expected.empty()) << stage;
            ASSERT_EQ(selectedOf(e.doc.lines()), expected) << stage << " at " << x << "," << y;
            hits += expected.size();
        }
        EXPECT_GT(hits, 300u) << stage << ": the probes must hit lines to show anything";
    };
    compare("built");
    addRandomMap(e, rng, 300); // drawn after the grid was built
    compare("appended");
    e.doc.setLineSelected(7, true);
    e.doc.takeRecordsWhere([](std::int16_t, bool selected) { return selected; });
    compare("after a removal");
    addRandomMap(e, rng, 2000); // a whole file's worth more
    compare("after a load");
}

} // namespace
