#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::FakeWorld;

namespace {

TEST(ViewScale, CaptionShowsTheScaleToFiveDecimalsWithTheLocaleSeparator)
{
    const struct {
        float set;
        bool clamped; // set through setCurrentScale, else as the keyboard zoom sets it
        char separator;
        float scale;
        const char* caption;
    } cases[] = {
        {1, true, '.', 1, "Scale: 1"},
        {2.5f, true, '.', 2.5f, "Scale: 2.5"},
        {2.5f, true, ',', 2.5f, "Scale: 2,5"},
        {0.1f, true, '.', 0.5f, "Scale: 0.5"},
        {-3, true, '.', 0.5f, "Scale: 0.5"},
        {250, true, '.', 100, "Scale: 100"},
        {2.999996f, true, '.', 2.999996f, "Scale: 3"},
        {33.123456f, true, '.', 33.123456f, "Scale: 33.12346"},
        {1.0f / 3, false, '.', 1.0f / 3, "Scale: 0.33333"},
        {100.01f, false, '.', 100.01f, "Scale: 100.01"},
        {0.015625f, false, '.', 0.015625f, "Scale: 0.01562"}, // half to even
        {0.046875f, false, ',', 0.046875f, "Scale: 0,04688"},
    };
    for (const auto& c : cases) {
        FakeWorld world;
        world.editor.view.decimalSeparator = c.separator;
        if (c.clamped) {
            setCurrentScale(world.editor.view, world.editor.doc, c.set);
        } else {
            world.editor.view.currentScale = c.set;
            rescaleAll(world.editor.view, world.editor.doc);
        }
        EXPECT_EQ(world.editor.view.currentScale, c.scale) << c.set;
        EXPECT_EQ(world.editor.view.zoom.caption, QString::fromLatin1(c.caption)) << c.set;
    }
    EXPECT_EQ(scaleText(-0.000001f, '.'), QStringLiteral("0"));
}

TEST(LocationReadout, ShowsTheWorldPointAndTheNegatedLoc)
{
    const struct {
        float scale, offsetX, offsetY, x, y, z;
        char separator;
        const char *lblX, *lblY, *lblZ, *loc;
    } cases[] = {
        {2, 100, 50, 300, 250, 0, '.', "100", "100", "0", "Loc: -100 , -100"},
        {1, 0, 0, 12.5f, -300, -2.25f, '.', "12.5", "-300", "-2.25", "Loc: 300 , -12.5"},
        {1, 0, 0, 12.5f, -300.25f, 0, ',', "12.5", "-300.25", "0", "Loc: 300,25 , -12,5"},
        {1, 0, 0, 0, 0, 0, '.', "0", "0", "0", "Loc: 0 , 0"},
        {3, 0, 0, 1, 2, 1e7f, '.', "0.3333333", "0.6666667", "1E+07", "Loc: -0.6666667 , -0.3333333"},
        {0.5f, 0, 10, 2e7f, 10, 0, '.', "4E+07", "0", "0", "Loc: 0 , -4E+07"},
    };
    for (const auto& c : cases) {
        FakeWorld world;
        Editor& editor = world.editor;
        editor.view.decimalSeparator = c.separator;
        editor.view.currentScale = c.scale;
        editor.view.offsetX = c.offsetX;
        editor.view.offsetY = c.offsetY;
        editor.view.currentZ = c.z;
        showLocation(editor.view, c.x, c.y);
        const QStringList shown{editor.view.readout.x, editor.view.readout.y, editor.view.readout.z,
                                editor.view.readout.loc};
        EXPECT_EQ(shown, (QStringList{c.lblX, c.lblY, c.lblZ, c.loc}));
    }
}

} // namespace
