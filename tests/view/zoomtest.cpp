#include "view/zoom.h"
#include "editor/viewcommands.h"
#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

enum Content { Nothing, Line, Label, Both, TwoLines };

class Zoom : public ::testing::Test {
protected:
    void SetUp() override
    {
        setCurrentScale(editor.view, editor.doc, 1);
        resetView(editor.view, editor.doc);
    }
    FakeWorld world;
    Editor& editor = world.editor;
};

TEST_F(Zoom, StripReadsHalfAtItsLeftEndAndHundredAtItsRightUnderTheLeftButtonAlone)
{
    const float w = ZoomStrip::kWidth;
    const struct {
        int button;
        float x, scale;
    } cases[] = {{kLeftButton, 0, 0.5f},
                 {kLeftButton, w, 100},
                 {kLeftButton, w / 2, 50.25f},
                 {kLeftButton, w / 4, 25.375f},
                 {kLeftButton, -50, 0.5f},
                 {kLeftButton, w + 100, 100},
                 {0, w, 1},
                 {kRightButton, w, 1},
                 {kMiddleButton, w, 1},
                 {kLeftButton | kRightButton, w, 1}};
    for (const auto& c : cases) {
        setCurrentScale(editor.view, editor.doc, 1);
        editor.view.offsetX = 3;
        zoomStripMouseMove(editor.view, editor.doc, c.button, c.x);
        EXPECT_FLOAT_EQ(editor.view.currentScale, c.scale) << c.button << " at " << c.x;
        EXPECT_TRUE(c.button == kLeftButton || editor.view.offsetX == 3) << c.button;
    }
}

TEST_F(Zoom, TheWorldPointUnderTheAnchorStaysPut)
{
    for (const SurfacePoint& anchor : {SurfacePoint{0, 0}, {1000, 2000}, {6795, 7155}, {-300, 12000}}) {
        setCurrentScale(editor.view, editor.doc, 3);
        editor.view.offsetX = 250;
        editor.view.offsetY = -125;
        editor.view.zoomAnchor = anchor;
        const MapPoint a = toWorld(editor.view, anchor.x, anchor.y);
        for (float x : {0.f, 1.f, 400.f, 1807.5f, 3615.f, 20.f}) {
            zoomStripMouseMove(editor.view, editor.doc, kLeftButton, x);
            // Offsets near a million twips carry about an eighth of a twip.
            EXPECT_NEAR(a.x * editor.view.currentScale + editor.view.offsetX, anchor.x, 0.5) << x;
            EXPECT_NEAR(a.y * editor.view.currentScale + editor.view.offsetY, anchor.y, 0.5) << x;
        }
    }
}

TEST_F(Zoom, ReapplyingReadsTheMarkerBackHalfAStepHigher)
{
    const float cases[][2] = {{1, 1.5f}, {10, 10.5f}, {0.5f, 1}, {50, 50.5f}, {99.5f, 100}, {100, 100}};
    for (const auto& c : cases) {
        setCurrentScale(editor.view, editor.doc, c[0]);
        reapplyZoomScale(editor.view, editor.doc);
        EXPECT_NEAR(editor.view.currentScale, c[1], 1e-4) << c[0];
    }
}

TEST_F(Zoom, FitSettlesHalfAStepBelowTheFirstScaleThatOverflows)
{
    const struct {
        const char* name;
        float mapW, mapH, start;
        Content kind;
        float x1, y1, x2, y2;
        float scale;
    } cases[] = {
        {"box of +-100", 6795, 7155, 1, Line, -100, -100, 100, 100, 33.5f},
        {"content on the edge fits", 2000, 2000, 1, Line, -100, -100, 100, 100, 10},
        {"too wide even at scale 1", 6795, 7155, 1, Line, -10000, 0, 10000, 0, 0.5f},
        {"a single point", 6795, 7155, 1, Line, 5, 5, 5, 5, 100},
        {"nothing", 6795, 7155, 1, Nothing, 0, 0, 0, 0, 100},
        {"a later line's first end", 6795, 7155, 1, TwoLines, -100, -100, 100, 100, 33.5f},
        {"a label beyond the line", 6795, 7155, 1, Both, -100, -100, 300, 100, 11.5f},
        // Labels alone are not centred: the steps start from the current view.
        {"labels from 2.25", 6795, 7155, 2.25f, Label, 1000, 0, 0, 0, 6.75f},
        {"labels from above the limit", 6795, 7155, 150, Label, 60, 0, 0, 0, 100},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.view.mapWidth = c.mapW;
        e.view.mapHeight = c.mapH;
        e.view.currentScale = c.start; // as the keyboard zoom can leave it
        // A point at (x2, y2) first, then the line from (x1, y1) to it; both: a
        // line from (x1, y1) to (x1, y2) and a label at (x2, y1).
        if (c.kind == TwoLines)
            addTestLine(e, c.x2, c.y2, 0, c.x2, c.y2, 0, kBlack, 1);
        if (c.kind == Line || c.kind == TwoLines)
            addTestLine(e, c.x1, c.y1, 0, c.x2, c.y2, 0, kBlack, 1);
        if (c.kind == Both)
            addTestLine(e, c.x1, c.y1, 0, c.x1, c.y2, 0, kBlack, 1);
        if (c.kind == Label || c.kind == Both)
            addTestLabel(e, c.kind == Both ? c.x2 : c.x1, c.y1, 0, kBlack, "here", 1);
        e.tools.state.holdDrawing = true;
        fitContentToScreen(e);
        EXPECT_NEAR(e.view.currentScale, c.scale, 1e-4) << c.name;
        EXPECT_EQ(w.events.calls, 1) << c.name;
        EXPECT_FALSE(e.tools.state.holdDrawing) << c.name;
        EXPECT_TRUE(e.view.zoomAnchor.x == c.mapW / 2 && e.view.zoomAnchor.y == c.mapH / 2) << c.name;
        EXPECT_EQ(e.view.zoom.caption, QStringLiteral("Scale: ") + QString::number(double(c.scale))) << c.name;
        // Content with lines stays centred as at scale 1; labels alone are not moved.
        const bool centred = c.kind == Line || c.kind == Both || c.kind == TwoLines;
        EXPECT_EQ(e.view.offsetX, centred ? c.mapW / 2 - (c.x1 + c.x2) / 2 : 0) << c.name;
        EXPECT_EQ(e.view.offsetY, centred ? c.mapH / 2 - (c.y1 + c.y2) / 2 : 0) << c.name;
    }
}

} // namespace
