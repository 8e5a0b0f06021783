#include "editor/layercommands.h"
#include "editor/mapsaving.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

using Markers = std::array<ColorRGB, kLayerCount>;

class LayerControlsTest : public ::testing::Test {
protected:
    FakeWorld world;
    Editor& editor = world.editor;
    Markers markers() const
    {
        return {markerColor(editor, 0), markerColor(editor, 1), markerColor(editor, 2), markerColor(editor, 3)};
    }
};

TEST_F(LayerControlsTest, ClickingTheMarkerOfAHiddenLayerShowsAndActivatesIt)
{
    activeMarkerClicked(editor, 2);
    EXPECT_EQ(editor.doc.activeLayer, 2);
    EXPECT_TRUE(editor.display.layerChecked[2]);
    EXPECT_EQ(markers(), (Markers{kWhite, kWhite, kRed, kWhite}));
    EXPECT_EQ(world.surface.frames(), 2); // once for the box, once for the layer
    EXPECT_EQ(world.focused, 1);

    // Setting the layer that is already active still repaints and redraws.
    setActiveLayer(editor, 2);
    EXPECT_EQ(world.surface.frames(), 3);
    EXPECT_EQ(markers(), (Markers{kWhite, kWhite, kRed, kWhite}));
    EXPECT_EQ(world.focused, 1); // the box was already checked
}

TEST_F(LayerControlsTest, UncheckingTheActiveLayerHidesItButKeepsItActive)
{
    activeMarkerClicked(editor, 1);
    const int frames = world.surface.frames();
    world.focused = 0;

    layerCheckClicked(editor, 1, false);
    EXPECT_EQ(world.surface.frames(), frames + 1);
    EXPECT_EQ(world.focused, 1);
    EXPECT_EQ(editor.doc.activeLayer, 1);
    EXPECT_EQ(markerColor(editor, 1), kRed);
    EXPECT_FALSE(editor.display.layerChecked[1]);
}

TEST_F(LayerControlsTest, CloseAllLayersStartsAfreshAndLeavesNothingToSave)
{
    QTemporaryDir dir;
    for (LayerHome& home : editor.doc.homes)
        home = {
            QDir::toNativeSeparators(dir.filePath(QStringLiteral("layer.txt"))), QStringLiteral("layer.txt"), {}, 0};
    for (std::int16_t layer : {1, 3}) {
        ASSERT_FALSE(editor.doc.addLine("1,2,3,4,5,6,7,8,9", layer, 1));
        ASSERT_FALSE(editor.doc.addLabel("1,2,3,4,5,6,7,x", layer, 1));
    }
    editor.display.layerChecked = {false, true, false, true};
    setActiveLayer(editor, 3);
    setCurrentScale(editor.view, editor.doc, 4);
    adjustOffset(editor.view, 150, -300);
    editor.view.currentZ = 25;
    const float marker = editor.view.zoom.markerX1;

    closeAllLayers(editor);
    for (int n = 0; n < kLayerCount; ++n) {
        EXPECT_EQ(editor.doc.homes[std::size_t(n)].caption, defaultLayerName(n));
        EXPECT_TRUE(editor.doc.homes[std::size_t(n)].layerFile.isEmpty());
    }
    EXPECT_EQ(editor.doc.lineCount() + editor.doc.labelCount(), 0u);
    EXPECT_EQ(editor.doc.activeLayer, 0);
    EXPECT_EQ(markers(), (Markers{kRed, kWhite, kWhite, kWhite}));
    // The base layer is shown again; the others keep their visibility.
    EXPECT_EQ(editor.display.layerChecked, (std::array<bool, kLayerCount>{true, true, false, true}));
    EXPECT_EQ(editor.view.zoom.caption, QStringLiteral("Scale: 1"));
    EXPECT_EQ(editor.view.zoom.markerX1, marker) << "the zoom marker stays where it was";
    EXPECT_TRUE(editor.view.currentScale == 1 && editor.view.offsetX == 0 && editor.view.offsetY == 0);
    EXPECT_EQ(editor.view.currentZ, 25.f);

    saveAllLayers(editor);
    EXPECT_TRUE(world.dialogs.messages.empty());
    EXPECT_EQ(world.fileDialog.saves, 0);
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files).isEmpty());
}

} // namespace
