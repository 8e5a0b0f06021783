#include "render/displayoptions.h"
#include "editor/renderloop.h"
#include "editor/shutdown.h"
#include "editor/startup.h"
#include "editor/windowlayout.h"
#include "tests/support/fakes.h"

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::FakeWorld;

TEST(StartUp, ReappliesTheZoomWhileTheStartOffsetsHold)
{
    // The marker stands at 180 twips, 120 into the strip, which reads as
    // scale 3.8029; the view is then reset to 1 and only the marker, now at
    // 60 + 3615 * 3.8029 / 99.5, shows that scale.
    FakeWorld world;
    startUp(world.editor);
    EXPECT_NEAR(world.editor.view.zoom.markerX1, 198.16, 0.01);
    EXPECT_EQ(world.editor.view.currentScale, 1.0f);
    EXPECT_EQ(world.editor.view.offsetX, 0.0f);
    EXPECT_EQ(world.editor.view.zoom.caption, QStringLiteral("Scale: 1"));
    // Re-applying the zoom from the marker's laid-out position drew nothing.
    EXPECT_EQ(world.surface.frames(), 0);
}

TEST(StartUp, CaptionCarriesTheBuildVersion)
{
    EXPECT_EQ(windowCaption(), QStringLiteral("Plotwell v2.2.0"));
}

struct LayoutCase {
    float width, height;
    float stuffLeft, mapWidth, mapHeight;
};

TEST(WindowLayout, PanelsFollowTheOuterSize)
{
    const LayoutCase cases[] = {
        {11500, 8900, 7405, 7285, 7970},
        {20000, 12000, 15905, 15785, 11070},
        // Narrower than the panels: the map keeps its last width, nothing fails.
        {3000, 8000, -1095, 15785, 7070},
        // Lower than the menu allowance: the map keeps its last height.
        {3000, 500, -1095, 15785, 7070},
    };
    FakeWorld world;
    Editor& e = world.editor;
    for (const LayoutCase& c : cases) {
        layoutWindow(e, c.width, c.height);
        EXPECT_EQ(e.shell.stuffLeft, c.stuffLeft) << c.width;
        EXPECT_EQ(e.shell.toolsLeft, c.stuffLeft) << c.width;
        EXPECT_EQ(e.view.mapWidth, c.mapWidth) << c.width;
        EXPECT_EQ(e.view.mapHeight, c.mapHeight) << c.height;
        EXPECT_EQ(world.surface.width(), e.view.mapWidth);
        EXPECT_EQ(world.surface.height(), e.view.mapHeight);
    }
}

TEST(Shutdown, EndsOnTheSecondTickAfterRemovingTheWheelHook)
{
    FakeWorld world;
    Editor& e = world.editor;
    startUp(e);
    EXPECT_FALSE(e.shell.endTimerEnabled);
    requestClose(e);
    EXPECT_TRUE(e.shell.endTimerEnabled);
    EXPECT_FALSE(e.shell.ended);

    endTimerTick(e);
    EXPECT_EQ(e.shell.closeCount, 1);
    EXPECT_FALSE(e.shell.wheelHooked);
    EXPECT_FALSE(e.shell.ended);

    requestClose(e); // a second request only enables the timer again
    endTimerTick(e);
    EXPECT_EQ(e.shell.closeCount, 2);
    EXPECT_TRUE(e.shell.ended);
}

TEST(RenderLoop, DrawsFirstAndStepsTheFlashBetweenFrames)
{
    FakeWorld world;
    Editor& e = world.editor;
    startUp(e);
    finishStartUp(e);
    RenderLoop loop;
    std::vector<int> levelsDrawn;
    for (int i = 0; i < 10; ++i) {
        loop.tick(e);
        levelsDrawn.push_back(e.display.flashLevel);
    }
    EXPECT_EQ(world.surface.frames(), 10);
    const std::vector<int> expected{255, 191, 127, 63, 1, 65, 129, 193, 254, 190};
    EXPECT_EQ(levelsDrawn, expected);
}

TEST(RenderLoop, HoldKeepsTheSurfaceButTheFlashGoesOn)
{
    FakeWorld world;
    Editor& e = world.editor;
    startUp(e);
    finishStartUp(e);
    e.holdDrawing = true;
    RenderLoop loop;
    loop.tick(e);
    loop.tick(e);
    EXPECT_EQ(world.surface.frames(), 0);
    EXPECT_EQ(e.display.flashLevel, 191);
}
