#include "tests/support/fakes.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace plotwell;
using plotwell::test::FakeWorld;

namespace {

class Zoom : public ::testing::Test {
protected:
    void SetUp() override
    {
        setCurrentScale(editor, 1);
        resetView(editor);
    }
    void line(float x1, float y1, float x2, float y2, std::int16_t layer = 1)
    {
        const std::string text = std::to_string(x1) + "," + std::to_string(y1) + ",0," + std::to_string(x2) + ","
            + std::to_string(y2) + ",0,0,0,0";
        ASSERT_FALSE(editor.doc.addLine(text, layer, editor.view.currentScale));
    }
    void label(float x, float y, std::int16_t layer = 1)
    {
        const std::string text = std::to_string(x) + "," + std::to_string(y) + ",0,0,0,0,1,here";
        ASSERT_FALSE(editor.doc.addLabel(text, layer, editor.view.currentScale));
    }
    // Where a world point stands on the surface now.
    float surfaceX(float x) const { return x * editor.view.currentScale + editor.view.offsetX; }
    float surfaceY(float y) const { return y * editor.view.currentScale + editor.view.offsetY; }

    FakeWorld world;
    Editor& editor = world.editor;
};

TEST_F(Zoom, StripReadsHalfAtItsLeftEndAndHundredAtItsRight)
{
    const float w = ZoomStrip::kWidth;
    const float cases[][2] = {{0, 0.5f}, {w, 100}, {w / 2, 50.25f}, {w / 4, 25.375f}, {-50, 0.5f}, {w + 100, 100}};
    for (const auto& c : cases) {
        setCurrentScale(editor, 1);
        zoomStripMouseMove(editor, kLeftButton, c[0]);
        EXPECT_FLOAT_EQ(editor.view.currentScale, c[1]) << c[0];
    }
}

TEST_F(Zoom, StripIgnoresEverythingButTheLeftButtonAlone)
{
    editor.view.offsetX = 3;
    for (int button : {0, kRightButton, kMiddleButton, kLeftButton | kRightButton}) {
        zoomStripMouseMove(editor, button, ZoomStrip::kWidth);
        EXPECT_EQ(editor.view.currentScale, 1);
        EXPECT_EQ(editor.view.offsetX, 3);
        EXPECT_EQ(editor.zoom.caption, QStringLiteral("Scale: 1"));
    }
}

TEST_F(Zoom, TheWorldPointUnderTheAnchorStaysPut)
{
    const SurfacePoint anchors[] = {{0, 0}, {1000, 2000}, {6795, 7155}, {-300, 12000}};
    const float positions[] = {0, 1, 400, 1807.5f, 3615, 20};
    for (const SurfacePoint& anchor : anchors) {
        setCurrentScale(editor, 3);
        editor.view.offsetX = 250;
        editor.view.offsetY = -125;
        editor.tools.zoomAnchor = anchor;
        const MapPoint a = toWorld(editor.view, anchor.x, anchor.y);
        for (float x : positions) {
            zoomStripMouseMove(editor, kLeftButton, x);
            // Offsets near a million twips carry about an eighth of a twip.
            EXPECT_NEAR(surfaceX(a.x), anchor.x, 0.5) << x;
            EXPECT_NEAR(surfaceY(a.y), anchor.y, 0.5) << x;
        }
    }
}

TEST_F(Zoom, ReapplyingReadsTheMarkerBackHalfAStepHigher)
{
    const float cases[][2] = {{1, 1.5f}, {10, 10.5f}, {0.5f, 1}, {50, 50.5f}, {99.5f, 100}, {100, 100}};
    for (const auto& c : cases) {
        setCurrentScale(editor, c[0]);
        reapplyZoomScale(editor);
        EXPECT_NEAR(editor.view.currentScale, c[1], 1e-4) << c[0];
    }
}

TEST_F(Zoom, CenterPutsTheBoxOfAllRecordsAtTheMiddleAtScaleOne)
{
    setCurrentScale(editor, 3);
    line(10, 20, 30, -40, 1);
    line(0, 0, 5, 5, 0);
    label(-50, 100, 3); // a layer that is not shown counts too
    centerContent(editor);
    EXPECT_EQ(editor.view.currentScale, 1);
    EXPECT_EQ(editor.view.offsetX, 6795.0f / 2 + 10);
    EXPECT_EQ(editor.view.offsetY, 7155.0f / 2 - 30);
    EXPECT_EQ(editor.doc.lines()[0].p2.sx, 30);
    EXPECT_EQ(editor.zoom.caption, QStringLiteral("Scale: 1"));
}

TEST_F(Zoom, CenterDoesNothingWithoutLines)
{
    setCurrentScale(editor, 3);
    editor.view.offsetX = 7;
    label(100, 100);
    centerContent(editor);
    EXPECT_EQ(editor.view.currentScale, 3);
    EXPECT_EQ(editor.view.offsetX, 7);
    EXPECT_EQ(editor.view.offsetY, 0);
}

TEST_F(Zoom, FitSettlesHalfAStepBelowTheFirstScaleThatOverflows)
{
    struct Case {
        const char* name;
        float mapW, mapH;
        float x1, y1, x2, y2;
        float scale;
    };
    const Case cases[] = {
        {"box of +-100", 6795, 7155, -100, -100, 100, 100, 33.5f},
        {"content on the edge fits", 2000, 2000, -100, -100, 100, 100, 10},
        {"too wide even at scale 1", 6795, 7155, -10000, 0, 10000, 0, 0.5f},
        {"a single point", 6795, 7155, 5, 5, 5, 5, 100},
        {"off centre", 6795, 7155, 100, 200, 300, 400, 9.5f},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.map.width = c.mapW;
        e.map.height = c.mapH;
        std::int16_t layer = 1;
        ASSERT_FALSE(e.doc.addLine(std::to_string(c.x1) + "," + std::to_string(c.y1) + ",0," + std::to_string(c.x2) + ","
                                       + std::to_string(c.y2) + ",0,0,0,0",
                                   layer, 1));
        e.tools.holdDrawing = true;
        fitContentToScreen(e);
        EXPECT_EQ(e.view.currentScale, c.scale) << c.name;
        EXPECT_EQ(w.events.calls, 1) << c.name;
        EXPECT_FALSE(e.tools.holdDrawing) << c.name;
        EXPECT_EQ(e.tools.zoomAnchor.x, c.mapW / 2) << c.name;
        EXPECT_EQ(e.tools.zoomAnchor.y, c.mapH / 2) << c.name;
        // The offsets stay as centring left them, so the box's centre moves
        // away from the middle by its distance from the origin times (s - 1).
        const float cx = (c.x1 + c.x2) / 2, cy = (c.y1 + c.y2) / 2, s = e.view.currentScale;
        EXPECT_FLOAT_EQ(cx * s + e.view.offsetX, c.mapW / 2 + cx * (s - 1)) << c.name;
        EXPECT_FLOAT_EQ(cy * s + e.view.offsetY, c.mapH / 2 + cy * (s - 1)) << c.name;
        EXPECT_EQ(e.zoom.caption, QStringLiteral("Scale: ") + QString::number(double(c.scale))) << c.name;
    }
}

TEST_F(Zoom, FitOfLabelsAloneStartsFromTheCurrentView)
{
    struct Case {
        const char* name;
        float startScale;
        float x, y;
        float scale;
    };
    const Case cases[] = {
        {"a label at the origin", 1, 0, 0, 100},
        {"steps from 2.25", 2.25f, 1000, 0, 6.75f},
        {"steps from 1", 1, 1000, 0, 6.5f},
        {"overflows at once", 4, 2000, 0, 3.5f},
        {"overflows at once below the limit", 0.5f, 20000, 0, 0.5f},
        {"from above the limit", 150, 60, 0, 100},
        {"from below the limit", 0.2f, 1000, 0, 6.7f},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.view.currentScale = c.startScale; // as the keyboard zoom can leave it
        std::int16_t layer = 2;
        ASSERT_FALSE(e.doc.addLabel(std::to_string(c.x) + "," + std::to_string(c.y) + ",0,0,0,0,1,x", layer, 1));
        fitContentToScreen(e);
        EXPECT_NEAR(e.view.currentScale, c.scale, 1e-4) << c.name;
        EXPECT_EQ(e.view.offsetX, 0) << c.name;
        EXPECT_EQ(e.view.offsetY, 0) << c.name;
        EXPECT_FLOAT_EQ(e.doc.labels()[0].pos.sx, c.x * e.view.currentScale) << c.name;
    }
}

TEST_F(Zoom, FitOfNothingEndsAtTheLargestScale)
{
    fitContentToScreen(editor);
    EXPECT_EQ(editor.view.currentScale, 100);
    EXPECT_EQ(editor.zoom.markerX1, ZoomStrip::kLeft + ZoomStrip::kWidth);
}

// The fit as the steps read: try each scale on the real view, testing every
// point, until something overflows or the scale stops growing.
void stepwiseFit(Editor& e)
{
    centerContent(e);
    for (;;) {
        const MapPoint a = toWorld(e.view, 0, 0);
        const MapPoint b = toWorld(e.view, e.map.width, e.map.height);
        bool overflows = false;
        const auto test = [&](const MapPoint& p) {
            overflows = overflows || p.x < a.x || p.x > b.x || p.y < a.y || p.y > b.y;
        };
        for (const MapLine& l : e.doc.lines()) {
            test(l.p1);
            test(l.p2);
        }
        for (const MapLabel& t : e.doc.labels())
            test(t.pos);
        if (overflows) {
            setCurrentScale(e, e.view.currentScale - 0.5f);
            return;
        }
        const float before = e.view.currentScale;
        setCurrentScale(e, before + 0.5f);
        if (e.view.currentScale == before)
            return;
    }
}

TEST_F(Zoom, FitAgreesWithTryingEveryScaleOnRandomContent)
{
    std::mt19937 rng(11);
    std::uniform_real_distribution<float> coord(-3000, 3000);
    std::uniform_real_distribution<float> spread(0.5f, 4000);
    std::uniform_int_distribution<int> count(0, 6);
    for (int round = 0; round < 300; ++round) {
        FakeWorld fast, slow;
        const float start = round % 3 == 0 ? 0.2f + round * 0.37f : 1;
        fast.editor.view.currentScale = slow.editor.view.currentScale = start;
        const float cx = coord(rng), cy = coord(rng), r = spread(rng);
        std::uniform_real_distribution<float> near(-r, r);
        const int lines = count(rng), labels = count(rng);
        for (int i = 0; i < lines + labels; ++i) {
            std::int16_t layer = std::int16_t(i % 4);
            const std::string text = std::to_string(cx + near(rng)) + "," + std::to_string(cy + near(rng)) + ",0,";
            for (Editor* e : {&fast.editor, &slow.editor}) {
                e->doc.activeLayer = layer;
                if (i < lines)
                    ASSERT_FALSE(e->doc.addLine(text + "1,2,0,0,0,0", layer, start));
                else
                    ASSERT_FALSE(e->doc.addLabel(text + "0,0,0,1,x", layer, start));
            }
        }
        fitContentToScreen(fast.editor);
        stepwiseFit(slow.editor);
        EXPECT_EQ(fast.editor.view.currentScale, slow.editor.view.currentScale) << "round " << round;
        EXPECT_EQ(fast.editor.view.offsetX, slow.editor.view.offsetX) << "round " << round;
        EXPECT_EQ(fast.editor.view.offsetY, slow.editor.view.offsetY) << "round " << round;
    }
}

} // namespace
