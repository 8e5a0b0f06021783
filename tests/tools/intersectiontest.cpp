#include "tools/intersection.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <string>

using namespace plotwell;
using namespace plotwell::test;

namespace {

MapPoint at(float x, float y)
{
    MapPoint p;
    p.x = x;
    p.y = y;
    return p;
}

TEST(IntersectLines, InfiniteLinesInSinglePrecision)
{
    const struct {
        MapPoint a1, a2, b1, b2;
        float x, y;
    } cases[] = {
        {at(0, 0), at(10, 10), at(0, 10), at(10, 0), 5, 5},
        // The vertical line is taken through (21, 5): the crossing is at 21.5.
        {at(0, 0), at(10, 0), at(20, 5), at(20, 15), 21.5f, 0},
        {at(20, 5), at(20, 15), at(0, 0), at(10, 0), 21.5f, 0},
        // Beyond both segments.
        {at(0, 0), at(1, 1), at(10, 0), at(11, -1), 5, 5},
        // Parallel, and the same line twice.
        {at(0, 0), at(10, 10), at(0, 5), at(10, 15), -1, -1},
        {at(0, 0), at(10, 0), at(3, 0), at(7, 0), -1, -1},
        // Two vertical lines have the same slope once both are adjusted.
        {at(5, 0), at(5, 10), at(8, 0), at(8, 10), -1, -1},
    };
    for (const auto& c : cases) {
        const MapPoint p = intersectLines(c.a1, c.a2, c.b1, c.b2);
        EXPECT_FLOAT_EQ(p.x, c.x) << c.a1.x << "," << c.a1.y << " " << c.b1.x << "," << c.b1.y;
        EXPECT_FLOAT_EQ(p.y, c.y) << c.a1.x << "," << c.a1.y << " " << c.b1.x << "," << c.b1.y;
    }
}

std::string lineText(const MapLine& l)
{
    char text[160];
    std::snprintf(text, sizeof text, "%g,%g,%g > %g,%g,%g rgb %d,%d,%d layer %d", double(l.p1.x), double(l.p1.y),
                  double(l.p1.z), double(l.p2.x), double(l.p2.y), double(l.p2.z), l.r, l.g, l.b, l.layer);
    return text;
}

TEST(PlotIntersection, ExtendsBothSelectedLinesFromTheirNearerEnds)
{
    const struct {
        float a[4], b[4];
        const char* first;
        const char* second;
    } cases[] = {
        // Equal distances take the second end.
        {{0, 0, 10, 10}, {0, 10, 10, 0}, "10,10,7 > 5,5,7 rgb 1,2,3 layer 3", "10,0,7 > 5,5,7 rgb 1,2,3 layer 3"},
        {{0, 0, 10, 0}, {20, 5, 20, 15}, "10,0,7 > 21.5,0,7 rgb 1,2,3 layer 3", "20,5,7 > 21.5,0,7 rgb 1,2,3 layer 3"},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.doc.activeLayer = 3;
        e.view.currentZ = 7;
        e.palette.activeColor = {1, 2, 3};
        addTestLine(e, 50, 50, 0, 60, 60, 0, {}, 1);
        const std::size_t a = addTestLine(e, c.a[0], c.a[1], 100, c.a[2], c.a[3], 200, {}, 1);
        const std::size_t b = addTestLine(e, c.b[0], c.b[1], 100, c.b[2], c.b[3], 200, {}, 2);
        e.doc.setLineSelected(a, true);
        e.doc.setLineSelected(b, true);
        e.doc.setLabelSelected(addTestLabel(e, 0, 0, 0, {}, "Also_selected"), true);
        plotIntersection(e.toolContext());
        EXPECT_TRUE(w.dialogs.messages.empty());
        ASSERT_EQ(e.doc.lineCount(), 5u);
        EXPECT_EQ(lineText(e.doc.lines()[3]), c.first);
        EXPECT_EQ(lineText(e.doc.lines()[4]), c.second);
        EXPECT_TRUE(e.doc.lines()[a].selected && e.doc.lines()[b].selected);
        EXPECT_FALSE(e.doc.lines()[3].selected || e.doc.lines()[4].selected);
        EXPECT_EQ(e.history.stepCount(), 1u) << "one step undoes both";
    }
}

TEST(PlotIntersection, TellsWhyItCannot)
{
    const struct {
        int selected;
        bool parallel;
        const char* message;
    } cases[] = {
        {0, false, "This function only works when you have exactly two lines selected, not 0"},
        {1, false, "This function only works when you have exactly two lines selected, not 1"},
        {3, false, "This function only works when you have exactly two lines selected, not 3"},
        {2, true, "Failed to find an intersection for these lines"},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        for (int i = 0; i < 3; ++i) {
            const float rise = c.parallel ? 10 : float(i) * 5;
            e.doc.setLineSelected(addTestLine(e, 0, float(i) * 3, 0, 10, float(i) * 3 + rise, 0, {}), i < c.selected);
        }
        plotIntersection(e.toolContext());
        ASSERT_EQ(w.dialogs.messages.size(), 1u);
        EXPECT_EQ(w.dialogs.messages[0].text, QString::fromLatin1(c.message));
        EXPECT_EQ(e.doc.lineCount(), 3u);
    }
}

TEST(FindLabels, SelectsEveryLabelHoldingTheKeywordInAnyCase)
{
    const struct {
        const char* answer; // nullptr: cancelled
        const char* selected;
    } cases[] = {
        {"BANK", "Bank Old_Bank riverbank Guild_Hall"},
        {"North Gate", "Guild_Hall"},
        {"north_gate", "North_Gate Guild_Hall"},
        {"\xc3\x84rger", "\xe4rger Guild_Hall"}, // an 8-bit letter, in either case
        {nullptr, "Guild_Hall"},
        {"", "Guild_Hall"},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        for (const char* name : {"Bank", "Old_Bank", "riverbank", "North_Gate", "\xe4rger"})
            addTestLabel(e, 0, 0, 0, {}, name, std::int16_t(std::string(name).size() % 4));
        e.doc.setLabelSelected(addTestLabel(e, 0, 0, 0, {}, "Guild_Hall"), true);
        if (c.answer)
            w.dialogs.answers.push_back(QString::fromUtf8(c.answer));
        findLabels(e.toolContext());
        ASSERT_EQ(w.dialogs.prompts.size(), 1u);
        EXPECT_EQ(w.dialogs.prompts[0].text, QStringLiteral("Enter keyword to search for"));
        EXPECT_EQ(w.dialogs.prompts[0].defaultText, QStringLiteral("bank"));
        std::string selected;
        for (const MapLabel& t : e.doc.labels())
            if (t.selected)
                selected += (selected.empty() ? "" : " ") + t.text;
        EXPECT_EQ(selected, c.selected) << (c.answer ? c.answer : "cancel");
    }
}

} // namespace
