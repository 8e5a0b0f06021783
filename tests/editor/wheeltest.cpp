#include "view/wheel.h"
#include "editor/mapevents.h"
#include "editor/viewcommands.h"
#include "view/zoom.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <cmath>
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
        {{120, -120, 240}, {1, -1, 2}}, {{40, 40, 40, 40}, {0, 0, 1, 0}}, {{-30, -30, -30, -30, -30}, {0, 0, 0, -1, 0}},
        {{100, -20, -100}, {0, 0, -1}}, // turning back drops what built up
        {{-100, 20, 100}, {0, 0, 1}},   {{-60, 0, -60}, {0, 0, -1}},      {{0, 0}, {0, 0}},
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
        {1, false, 120, 1.5f},
        {1, true, 120, 1.01f},
        {0.5f, false, -120, 0.5f},
        {99.8f, false, 120, 100},
        {100, false, 120, 100},
        {3, false, -1, 2.5f},
        {3, false, 0, 3},
        // Scales the keys set beyond the wheel's range.
        {0.2f, false, -120, 0.5f},
        {0.2f, false, 120, 0.7f},
        {150, false, 120, 100},
        {150, false, -120, 100},
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
        float after;
        const char* shown;
    } cases[] = {{0, false, 120, 10, "10"},
                 {0, true, 120, 1, "1"},
                 {0, false, -120, -10, "-10"},
                 {2.5f, true, -240, 1.5f, "1.5"},
                 {3.4e38f, false, 120, 3.4e38f, "3.4E+38"}};
    for (const auto& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        e.shell.wheelHooked = true;
        e.keys.zKey = true;
        e.keys.theShiftKeyIsDown = c.shift;
        e.view.currentZ = c.z;
        onMouseWheel(e, c.delta);
        EXPECT_EQ(e.view.currentZ, c.after);
        EXPECT_EQ(e.view.readout.z, QString::fromLatin1(c.shown));
        EXPECT_EQ(e.view.currentScale, 1.0f) << "no zoom";
        EXPECT_EQ(w.surface.frames(), 1);
        EXPECT_TRUE(e.shell.wheelHooked);
    }
}

// A map near the single limit: its centre overflowed the fit, the wheel
// then made the offsets NaN, and a click on the line grid read far outside it.
TEST(ViewSteps, AMapAtTheSingleLimitFitsAndTakesTheWheelAndClicks)
{
    FakeWorld w;
    Editor& e = w.editor;
    e.shell.wheelHooked = true;
    for (int i = 0; i < 3000; ++i)
        addTestLine(e, 2.5e38f, float(i), 0, 2.5e38f, float(i + 1), 0, {255, 0, 0});
    fitContentToScreen(e);
    e.view.lastMousePoint = {e.view.mapWidth / 2, e.view.mapHeight / 2};
    for (int notch = 0; notch < 3; ++notch)
        onMouseWheel(e, -120);
    mapMouseDown(e, kLeftButton, e.view.lastMousePoint);
    mapMouseUp(e);
    EXPECT_TRUE(std::isfinite(e.view.offsetX) && std::isfinite(e.view.offsetY)) << e.view.offsetX;
    // Fitted at scale 1 with the middle of the map at the centre, which the
    // wheel kept under the pointer.
    EXPECT_EQ(e.view.currentScale, 0.5f);
    EXPECT_EQ(e.view.offsetY, e.view.mapHeight / 2 - 1500 * 0.5f);
}

} // namespace
