#include "editor/viewcommands.h"
#include "view/wheel.h"

#include "tests/support/fakes.h"

#include <gtest/gtest.h>

#include <vector>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(WheelNotches, SmallDeltasAddUpToWholeNotches)
{
    const struct {
        std::vector<int> deltas;
        std::vector<int> notches;
    } cases[] = {
        {{120, -120, 240}, {1, -1, 2}},
        {{40, 40, 40, 40}, {0, 0, 1, 0}},
        {{-30, -30, -30, -30, -30}, {0, 0, 0, -1, 0}},
        {{100, -20, -100}, {0, 0, -1}}, // turning back drops what built up
        {{0, 0}, {0, 0}},
    };
    for (const auto& c : cases) {
        WheelNotches wheel;
        std::vector<int> notches;
        for (const int d : c.deltas)
            notches.push_back(wheel.feed(d));
        EXPECT_EQ(notches, c.notches);
    }
}

TEST(MouseWheel, ZoomsAboutThePointerWithinTheScaleRange)
{
    const struct {
        float scale;
        bool shift;
        int delta;
        float after;
    } cases[] = {
        {1, false, 120, 1.5f}, {1, true, 120, 1.01f}, {0.5f, false, -120, 0.5f},
        {99.8f, false, 120, 100}, {100, false, 120, 100}, {3, false, -1, 2.5f},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.shell.wheelHooked = true;
        e.view.currentScale = c.scale;
        e.view.offsetX = 300;
        e.view.offsetY = -40;
        e.view.lastMousePoint = {1500, 900};
        e.keys.theShiftKeyIsDown = c.shift;
        const MapPoint under = toWorld(e.view, e.view.lastMousePoint);
        onMouseWheel(e, c.delta);
        EXPECT_FLOAT_EQ(e.view.currentScale, c.after) << c.scale;
        const MapPoint still = toWorld(e.view, e.view.lastMousePoint);
        EXPECT_NEAR(still.x, under.x, 1e-3) << c.scale;
        EXPECT_NEAR(still.y, under.y, 1e-3) << c.scale;
        EXPECT_EQ(w.events.calls, 1);
        if (c.after == c.scale) {
            EXPECT_TRUE(e.view.offsetX == 300 && e.view.offsetY == -40) << "the view does not move";
        }
    }
}

TEST(MouseWheel, WithZHeldStepsTheCurrentZAndRedraws)
{
    const struct {
        float z;
        bool shift;
        int delta;
        const char* shown;
    } cases[] = {{0, false, 120, "10"}, {0, true, 120, "1"}, {0, false, -120, "-10"}, {2.5f, true, -240, "1.5"},
                 {3.4e38f, false, 120, "3.4E+38"}};
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.shell.wheelHooked = true;
        e.keys.zKey = true;
        e.keys.theShiftKeyIsDown = c.shift;
        e.view.currentZ = c.z;
        onMouseWheel(e, c.delta);
        EXPECT_EQ(e.view.readout.z, QString::fromLatin1(c.shown));
        EXPECT_EQ(e.view.currentScale, 1.0f) << "no zoom";
        EXPECT_EQ(w.surface.frames(), 1);
        EXPECT_TRUE(e.shell.wheelHooked);
    }
}

TEST(MouseWheel, DoesNothingOnceTheHookIsRemoved)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.shell.wheelHooked = false;
    onMouseWheel(e, 120);
    EXPECT_EQ(e.view.currentScale, 1.0f);
    EXPECT_EQ(w.events.calls, 0);
}

} // namespace
