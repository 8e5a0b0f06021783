#include "editor/startup.h"
#include "editor/renderloop.h"
#include "editor/shutdown.h"
#include "editor/windowlayout.h"
#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/displayoptions.h"

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::addTestLine;
using plotwell::test::FakeWorld;

TEST(StartUp, ReappliesTheZoomWhileTheStartOffsetsHold)
{
    // The marker stands at 180 twips, 120 into the strip, which reads as
    // scale 3.8029; the view is then reset to 1 and only the marker, now at
    // 60 + 3615 * 3.8029 / 99.5, shows that scale.
    FakeWorld world;
    world.settings.save(QStringLiteral("colorPresets"), QStringLiteral("3"), QStringLiteral("7,8,9"));
    startUp(world.editor);
    EXPECT_EQ(world.editor.palette.swatchColors[3], (ColorRGB{7, 8, 9}));
    EXPECT_TRUE(world.editor.underlay.underlayOn);
    EXPECT_NEAR(world.editor.view.zoom.markerX1, 198.16, 0.01);
    EXPECT_EQ(world.editor.view.currentScale, 1.0f);
    EXPECT_EQ(world.editor.view.offsetX, 0.0f);
    EXPECT_EQ(world.editor.view.zoom.caption, QStringLiteral("Scale: 1"));
    // Re-applying the zoom from the marker's laid-out position drew nothing.
    EXPECT_EQ(world.surface.frames(), 0);
    EXPECT_EQ(world.editor.underlay.picture.size(), QSize(505, 386)) << "the built-in picture";
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
        // Exactly the panels and the menu: a map of no size.
        {4215, 930, 120, 0, 0},
    };
    FakeWorld world;
    Editor& e = world.editor;
    for (const LayoutCase& c : cases) {
        layoutWindow(e.view, e.shell, e.services.surface, c.width, c.height);
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
    requestClose(e.shell);
    EXPECT_TRUE(e.shell.endTimerEnabled);
    EXPECT_FALSE(e.shell.ended);

    endTimerTick(e.shell);
    EXPECT_EQ(e.shell.closeCount, 1);
    EXPECT_FALSE(e.shell.wheelHooked);
    EXPECT_FALSE(e.shell.ended);

    requestClose(e.shell); // a second request only enables the timer again
    endTimerTick(e.shell);
    EXPECT_EQ(e.shell.closeCount, 2);
    EXPECT_TRUE(e.shell.ended);
}

TEST(RenderLoop, StepsTheFlashEveryTickAndDrawsOnlyWhatCanHaveChanged)
{
    FakeWorld world;
    Editor& e = world.editor;
    startUp(e);
    finishStartUp(e);
    addTestLine(e, 0, 0, 0, 10, 10, 0, kBlack);
    RenderLoop loop;
    std::vector<int> levels;
    std::vector<bool> drawn;
    const auto tick = [&] {
        drawn.push_back(loop.tick(e));
        levels.push_back(e.display.flashLevel);
    };
    tick(); // the first frame is always drawn
    tick(); // nothing changed, nothing selected: the last frame stands
    e.frameDirty = true;
    tick();
    e.doc.setLineSelected(0, true); // a selection flashes: every frame differs
    for (int i = 0; i < 5; ++i)
        tick();
    e.display.flashChecked = false; // steady red: nothing to redraw
    tick();
    e.tools.state.holdDrawing = true;
    e.frameDirty = true;
    tick(); // held: nothing is drawn, and the flash goes on
    EXPECT_EQ(levels, (std::vector<int>{255, 191, 127, 63, 1, 65, 129, 193, 254, 190}));
    EXPECT_EQ(drawn, (std::vector<bool>{true, false, true, true, true, true, true, true, false, true}));
    EXPECT_EQ(world.surface.frames(), 7);
    EXPECT_EQ(world.surface.only(plotwell::test::Op::Line).size(), 7u) << "the selected line is in every frame";
}
