#include "tests/support/fakes.h"
#include "view/viewcontrol.h"
#include "view/viewtransform.h"

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::FakeWorld;

namespace {

void addLine(Editor& editor, const char* text)
{
    std::int16_t layer = 1;
    ASSERT_FALSE(editor.doc.addLine(text, layer, editor.view.currentScale));
}

void addLabel(Editor& editor, const char* text)
{
    std::int16_t layer = 1;
    ASSERT_FALSE(editor.doc.addLabel(text, layer, editor.view.currentScale));
}

TEST(ViewScale, CaptionShowsTheClampedScaleToFiveDecimals)
{
    struct Case {
        float set;
        float scale;
        const char* caption;
    };
    const Case cases[] = {
        {1, 1, "Scale: 1"},
        {2.5f, 2.5f, "Scale: 2.5"},
        {0.1f, 0.5f, "Scale: 0.5"},
        {-3, 0.5f, "Scale: 0.5"},
        {250, 100, "Scale: 100"},
        {2.999996f, 2.999996f, "Scale: 3"},
        {33.123456f, 33.123456f, "Scale: 33.12346"},
        {0.66f, 0.66f, "Scale: 0.66"},
    };
    for (const auto& c : cases) {
        FakeWorld world;
        setCurrentScale(world.editor, c.set);
        EXPECT_EQ(getCurrentScale(world.editor), c.scale) << c.set;
        EXPECT_EQ(world.editor.zoom.caption, QString::fromLatin1(c.caption)) << c.set;
    }
}

TEST(ViewScale, CaptionUsesTheLocaleDecimalSeparator)
{
    FakeWorld world;
    world.editor.decimalSeparator = ',';
    setCurrentScale(world.editor, 2.5f);
    EXPECT_EQ(world.editor.zoom.caption, QStringLiteral("Scale: 2,5"));
}

TEST(ViewScale, MarkerStandsAtScaleOver99Point5OfTheStrip)
{
    struct Case {
        float scale;
        float x1;
    };
    const float left = ZoomStrip::kLeft;
    const float width = ZoomStrip::kWidth;
    const Case cases[] = {
        {1, left + width * (1 / 99.5f)},
        {0.5f, left + width * (0.5f / 99.5f)},
        {50, left + width * (50 / 99.5f)},
        {99.5f, left + width},
        {100, left + width},
        {250, left + width},
    };
    for (const auto& c : cases) {
        FakeWorld world;
        setCurrentScale(world.editor, c.scale);
        EXPECT_FLOAT_EQ(world.editor.zoom.markerX1, c.x1) << c.scale;
    }
}

TEST(ViewScale, EveryPointIsRescaled)
{
    FakeWorld world;
    Editor& editor = world.editor;
    addLine(editor, "1,2,3,-4,5.5,6,0,0,0");
    addLabel(editor, "-7,8,9,0,0,0,1,x");
    setCurrentScale(editor, 2.5f);
    const MapLine& l = editor.doc.lines()[0];
    EXPECT_EQ(l.p1.sx, 2.5f);
    EXPECT_EQ(l.p1.sy, 5);
    EXPECT_EQ(l.p2.sx, -10);
    EXPECT_EQ(l.p2.sy, 13.75f);
    EXPECT_EQ(editor.doc.labels()[0].pos.sx, -17.5f);
    EXPECT_EQ(editor.doc.labels()[0].pos.sy, 20);

    // resetView goes back to scale 1 and the origin, leaving the marker.
    editor.view.offsetX = 40;
    editor.view.offsetY = -40;
    const float marker = editor.zoom.markerX1;
    resetView(editor);
    EXPECT_EQ(editor.view.currentScale, 1);
    EXPECT_EQ(editor.view.offsetX, 0);
    EXPECT_EQ(editor.view.offsetY, 0);
    EXPECT_EQ(editor.zoom.caption, QStringLiteral("Scale: 1"));
    EXPECT_EQ(editor.zoom.markerX1, marker);
    EXPECT_EQ(l.p2.sx, -4);
    EXPECT_EQ(editor.doc.labels()[0].pos.sy, 8);
}

TEST(ViewScale, RescaleAllWithNothingLoadedOnlySetsTheCaption)
{
    // Scales below 0.5 and above 100 come from the keyboard zoom.
    struct Case {
        float scale;
        const char* caption;
    };
    const Case cases[] = {{1.0f / 3, "Scale: 0.33333"}, {0.01f, "Scale: 0.01"}, {100.01f, "Scale: 100.01"},
                          {0.015625f, "Scale: 0.01562"}, {0.046875f, "Scale: 0.04688"}};
    for (const auto& c : cases) {
        FakeWorld world;
        world.editor.view.currentScale = c.scale;
        rescaleAll(world.editor);
        EXPECT_EQ(world.editor.zoom.caption, QString::fromLatin1(c.caption));
        EXPECT_EQ(world.editor.view.currentScale, c.scale);
        EXPECT_EQ(world.editor.zoom.markerX1, 180);
        EXPECT_EQ(world.editor.view.offsetX, 0);
    }
}

TEST(ViewTransform, SurfaceAndWorldPoints)
{
    ViewState view;
    view.currentScale = 2;
    view.offsetX = 100;
    view.offsetY = 50;
    struct Case {
        float sx, sy, wx, wy;
    };
    const Case cases[] = {{300, 250, 100, 100}, {100, 50, 0, 0}, {0, 0, -50, -25}, {-100, 51, -100, 0.5f}};
    for (const auto& c : cases) {
        const MapPoint w = toWorld(view, c.sx, c.sy);
        EXPECT_EQ(w.x, c.wx);
        EXPECT_EQ(w.y, c.wy);
        EXPECT_EQ(w.z, 0);
        EXPECT_EQ(w.sx, 0);
        EXPECT_EQ(w.sy, 0);

        MapPoint p{c.wx, c.wy, 7};
        scalePoint(p, view.currentScale);
        const MapPoint s = toSurfacePoint(view, p);
        EXPECT_EQ(s.sx, c.sx);
        EXPECT_EQ(s.sy, c.sy);
        EXPECT_EQ(s.x, 0);
        EXPECT_EQ(s.z, 0);
    }
}

TEST(ViewTransform, SurfacePointUsesTheStoredScaledValues)
{
    ViewState view;
    view.offsetX = 10;
    MapPoint p{1, 1, 0, 5, 6}; // sx, sy deliberately not x, y times the scale
    const MapPoint s = toSurfacePoint(view, p);
    EXPECT_EQ(s.sx, 15);
    EXPECT_EQ(s.sy, 6);
}

TEST(ViewTransform, OffsetsAddUp)
{
    FakeWorld world;
    adjustOffset(world.editor, 0, 0);
    EXPECT_EQ(world.editor.view.offsetX, 0);
    EXPECT_EQ(world.editor.view.offsetY, 0);
    adjustOffset(world.editor, 1.5f, -2);
    adjustOffset(world.editor, 1e6f, 3);
    EXPECT_EQ(world.editor.view.offsetX, 1000001.5f);
    EXPECT_EQ(world.editor.view.offsetY, 1);
}

TEST(LocationReadout, ShowsWorldPointAndNegatedLoc)
{
    struct Case {
        float scale, offsetX, offsetY, x, y, z;
        const char *lblX, *lblY, *lblZ, *loc;
    };
    const Case cases[] = {
        {2, 100, 50, 300, 250, 0, "100", "100", "0", "Loc: -100 , -100"},
        {1, 0, 0, 12.5f, -300, -2.25f, "12.5", "-300", "-2.25", "Loc: 300 , -12.5"},
        {1, 0, 0, 0, 0, 0, "0", "0", "0", "Loc: 0 , 0"},
        {3, 0, 0, 1, 2, 1e7f, "0.3333333", "0.6666667", "1E+07", "Loc: -0.6666667 , -0.3333333"},
        {0.5f, 0, 10, 2e7f, 10, 0, "4E+07", "0", "0", "Loc: 0 , -4E+07"},
    };
    for (const auto& c : cases) {
        FakeWorld world;
        Editor& editor = world.editor;
        editor.view.currentScale = c.scale;
        editor.view.offsetX = c.offsetX;
        editor.view.offsetY = c.offsetY;
        setCurrentZ(editor, c.z);
        showLocation(editor, c.x, c.y);
        EXPECT_EQ(editor.readout.x, QString::fromLatin1(c.lblX)) << c.loc;
        EXPECT_EQ(editor.readout.y, QString::fromLatin1(c.lblY)) << c.loc;
        EXPECT_EQ(editor.readout.z, QString::fromLatin1(c.lblZ)) << c.loc;
        EXPECT_EQ(editor.readout.loc, QString::fromLatin1(c.loc));
    }
}

TEST(LocationReadout, LocUsesTheLocaleSeparatorAndTheOthersAPoint)
{
    FakeWorld world;
    world.editor.decimalSeparator = ',';
    showLocation(world.editor, 12.5f, -300.25f);
    EXPECT_EQ(world.editor.readout.x, QStringLiteral("12.5"));
    EXPECT_EQ(world.editor.readout.y, QStringLiteral("-300.25"));
    EXPECT_EQ(world.editor.readout.loc, QStringLiteral("Loc: 300,25 , -12,5"));
}

TEST(LocationReadout, SettingZDoesNotUpdateTheReadout)
{
    FakeWorld world;
    Editor& editor = world.editor;
    setCurrentZ(editor, 42.5f);
    EXPECT_EQ(getCurrentZ(editor), 42.5f);
    EXPECT_EQ(editor.readout.z, QStringLiteral("0"));
    EXPECT_EQ(editor.readout.loc, QStringLiteral("Loc: "));
    showLocation(editor, 0, 0);
    EXPECT_EQ(editor.readout.z, QStringLiteral("42.5"));
}

} // namespace
