#include "document/layercontrols.h"
#include "document/maploading.h"
#include "tests/support/fakes.h"
#include "view/viewcontrol.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

using namespace plotwell;
using plotwell::test::FakeWorld;

namespace {

const QString kSettings = QStringLiteral("settings");
const QString kFolderKey = QStringLiteral("previousMapFolder");
const QString kFilter = QStringLiteral("Text files (*.txt)|*.txt|All Files(*.*)|*.*");

class Loading : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        // The view as start-up leaves it: scale 1 with its marker.
        setCurrentScale(editor, 1);
        resetView(editor);
    }

    // Writes a map file in a sub-folder and returns its path in native form.
    QString mapFile(const QString& folder, const QString& name, const QByteArray& text)
    {
        QDir(dir.path()).mkpath(folder);
        const QString path = QDir(dir.path()).filePath(folder + QLatin1Char('/') + name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return QDir::toNativeSeparators(path);
    }
    QString folderPath(const QString& folder) const
    {
        return QDir::toNativeSeparators(QDir(dir.path()).filePath(folder)) + QDir::separator();
    }
    QString lineFile(const QString& folder, const QString& name, int x)
    {
        return mapFile(folder, name, "L " + QByteArray::number(x) + ",0,0,1,1,1,0,0,0\r\n");
    }
    std::vector<int> lineLayers() const
    {
        std::vector<int> layers;
        for (const MapLine& l : editor.doc.lines())
            layers.push_back(l.layer);
        return layers;
    }
    std::vector<float> lineXs() const
    {
        std::vector<float> xs;
        for (const MapLine& l : editor.doc.lines())
            xs.push_back(l.p1.x);
        return xs;
    }
    void giveLayersFiles(std::initializer_list<int> layers)
    {
        for (int n : layers)
            editor.doc.layerFile[n] = QStringLiteral("taken%1.txt").arg(n);
    }

    QTemporaryDir dir;
    FakeWorld world;
    Editor& editor = world.editor;
};

TEST_F(Loading, MenuLoadIntoLayerOne)
{
    const QString path = mapFile(QStringLiteral("maps"), QStringLiteral("zone.txt"),
                                 "L 10.5, -20, 0, 30, 40, 0, 255, 0, 0\r\nP 1, 2, 3, 0, 0, 255, 2, Camp Fire\r\n");
    world.fileDialog.answers = {path};
    loadLayerFromMenu(editor, 1);

    ASSERT_EQ(editor.doc.lineCount(), 1u);
    const MapLine& l = editor.doc.lines()[0];
    EXPECT_EQ(l.layer, 1);
    EXPECT_EQ(l.p1.x, 10.5f);
    EXPECT_EQ(l.p1.y, -20);
    EXPECT_EQ(l.p2.x, 30);
    EXPECT_EQ(l.p2.y, 40);
    EXPECT_EQ(ColorRGB({l.r, l.g, l.b}), kRed);
    ASSERT_EQ(editor.doc.labelCount(), 1u);
    const MapLabel& t = editor.doc.labels()[0];
    EXPECT_EQ(t.layer, 1);
    EXPECT_EQ(ColorRGB({t.r, t.g, t.b}), ColorRGB({0, 0, 255}));
    EXPECT_EQ(t.size, 2);
    EXPECT_EQ(t.text, "Camp_Fire");

    EXPECT_EQ(editor.layers.captions[1], QStringLiteral("zone.txt"));
    EXPECT_TRUE(editor.layers.checked[1]);
    EXPECT_EQ(editor.doc.activeLayer, 1);
    EXPECT_EQ(markerColor(editor, 1), kRed);
    EXPECT_EQ(markerColor(editor, 0), kWhite);
    EXPECT_EQ(editor.doc.layerFile[1], path);
    EXPECT_EQ(world.settings.get(kSettings, kFolderKey, {}), folderPath(QStringLiteral("maps")));
    // Points are scaled at the scale the zoom re-apply left.
    EXPECT_FLOAT_EQ(l.p2.sx, 30 * editor.view.currentScale);
}

TEST_F(Loading, AFileThatCannotBeOpenedStillSetsLayerPathCaptionAndFolder)
{
    const QString path = folderPath(QStringLiteral("nowhere")) + QStringLiteral("missing.txt");
    world.fileDialog.answers = {path};
    loadLayerFromMenu(editor, 3);
    EXPECT_EQ(editor.doc.activeLayer, 3);
    EXPECT_TRUE(editor.layers.checked[3]);
    EXPECT_EQ(editor.doc.layerFile[3], path);
    EXPECT_EQ(editor.layers.captions[3], QStringLiteral("missing.txt"));
    EXPECT_EQ(world.settings.get(kSettings, kFolderKey, {}), folderPath(QStringLiteral("nowhere")));
    EXPECT_EQ(editor.doc.lineCount() + editor.doc.labelCount(), 0u);
    // The load ended before the zoom was re-applied.
    EXPECT_EQ(editor.view.currentScale, 1);
}

TEST_F(Loading, CancellingTheDialogEmptiesTheLayerButKeepsItsFile)
{
    const QString path = lineFile(QStringLiteral("a"), QStringLiteral("two.txt"), 7);
    world.fileDialog.answers = {path};
    loadLayerFromMenu(editor, 2);
    std::int16_t base = 0;
    editor.doc.activeLayer = 0;
    ASSERT_FALSE(editor.doc.addLine("1,0,0,1,1,1,0,0,0", base, 1));
    ASSERT_EQ(lineLayers(), (std::vector<int>{2, 0}));

    loadLayerFromMenu(editor, 2); // no answer left: cancel
    EXPECT_EQ(lineLayers(), (std::vector<int>{0}));
    EXPECT_EQ(editor.layers.captions[2], QStringLiteral("Layer 2"));
    EXPECT_EQ(editor.doc.layerFile[2], path);
    EXPECT_EQ(editor.doc.activeLayer, 0);
    EXPECT_EQ(markerColor(editor, 2), kWhite);
    EXPECT_TRUE(editor.layers.checked[2]);
}

TEST_F(Loading, CancellingALayerThatWasNeverShownLeavesItHidden)
{
    loadLayerFromMenu(editor, 1);
    EXPECT_EQ(world.fileDialog.opens, 1);
    EXPECT_EQ(editor.doc.activeLayer, 0);
    EXPECT_FALSE(editor.layers.checked[1]);
    EXPECT_EQ(editor.layers.captions[1], QStringLiteral("Layer 1"));
    EXPECT_EQ(world.settings.get(kSettings, kFolderKey, QStringLiteral("unset")), QStringLiteral("unset"));
}

TEST_F(Loading, AMenuLoadShowsTheLayerEvenWhenItWasAlreadyActive)
{
    // Making an already active layer active again is skipped while loading;
    // the menu's own last step still checks the box.
    editor.doc.activeLayer = 2;
    world.fileDialog.answers = {lineFile(QStringLiteral("a"), QStringLiteral("two.txt"), 2)};
    loadLayerFromMenu(editor, 2);
    EXPECT_TRUE(editor.layers.checked[2]);

    // A file that cannot be opened ends the menu load before that step.
    editor.doc.activeLayer = 3;
    world.fileDialog.answers = {folderPath(QStringLiteral("a")) + QStringLiteral("missing.txt")};
    loadLayerFromMenu(editor, 3);
    EXPECT_FALSE(editor.layers.checked[3]);
    EXPECT_EQ(editor.layers.captions[3], QStringLiteral("missing.txt"));
}

TEST_F(Loading, ClearingALayerResetsItsCaptionOnly)
{
    world.fileDialog.answers = {lineFile(QStringLiteral("a"), QStringLiteral("one.txt"), 1)};
    loadLayerFromMenu(editor, 1);
    setActiveLayer(editor, 3);
    clearLayer(editor, 1);
    EXPECT_EQ(editor.doc.lineCount(), 0u);
    EXPECT_EQ(editor.layers.captions[1], QStringLiteral("Layer 1"));
    EXPECT_FALSE(editor.doc.layerFile[1].isEmpty());
    EXPECT_TRUE(editor.layers.checked[1]);
    EXPECT_EQ(editor.doc.activeLayer, 3);
    clearLayer(editor, 0);
    EXPECT_EQ(editor.layers.captions[0], QStringLiteral("Base Layer"));
}

TEST_F(Loading, TheDialogStartsInTheFolderOfTheLastFileOpened)
{
    world.fileDialog.answers = {lineFile(QStringLiteral("first"), QStringLiteral("a.txt"), 1)};
    loadLayerFromMenu(editor, 1);
    dropFiles(editor, {lineFile(QStringLiteral("dropped"), QStringLiteral("b.txt"), 2)});
    loadLayerFromMenu(editor, 3); // cancelled
    world.fileDialog.answers = {lineFile(QStringLiteral("third"), QStringLiteral("c.txt"), 3)};
    loadLayerFromMenu(editor, 3);
    loadLayerFromMenu(editor, 2); // cancelled

    EXPECT_EQ(world.fileDialog.shownFolders,
              (QStringList{QStringLiteral("."), folderPath(QStringLiteral("dropped")), folderPath(QStringLiteral("dropped")),
                           folderPath(QStringLiteral("third"))}));
    EXPECT_EQ(world.fileDialog.shownFilters, (QStringList{kFilter, kFilter, kFilter, kFilter}));
}

TEST_F(Loading, DroppedFilesFillTheLayersWithoutAFile)
{
    giveLayersFiles({0, 2});
    const QString first = lineFile(QStringLiteral("d"), QStringLiteral("first.txt"), 1);
    const QString second = lineFile(QStringLiteral("d"), QStringLiteral("second.txt"), 2);
    dropFiles(editor, {first, second});
    EXPECT_EQ(editor.doc.layerFile[1], first);
    EXPECT_EQ(editor.doc.layerFile[3], second);
    EXPECT_EQ(lineLayers(), (std::vector<int>{1, 3}));
    EXPECT_EQ(lineXs(), (std::vector<float>{1, 2}));
    EXPECT_EQ(editor.layers.captions[1], QStringLiteral("first.txt"));
    EXPECT_EQ(editor.layers.captions[3], QStringLiteral("second.txt"));
    EXPECT_EQ(editor.doc.activeLayer, 3);
}

TEST_F(Loading, ADropWithEveryLayerTakenAppendsToLayerTwo)
{
    giveLayersFiles({0, 1, 3});
    const QString old = lineFile(QStringLiteral("d"), QStringLiteral("old.txt"), 5);
    dropFiles(editor, {old}); // goes to layer 2, the only one free
    const QString added = lineFile(QStringLiteral("d"), QStringLiteral("added.txt"), 6);
    setActiveLayer(editor, 0);
    dropFiles(editor, {added});
    EXPECT_EQ(lineLayers(), (std::vector<int>{2, 2}));
    EXPECT_EQ(lineXs(), (std::vector<float>{5, 6}));
    EXPECT_EQ(editor.doc.layerFile[2], added);
    EXPECT_EQ(editor.layers.captions[2], QStringLiteral("added.txt"));
    EXPECT_EQ(editor.doc.activeLayer, 2);
}

TEST_F(Loading, LaterDroppedFilesFollowThePreviousOneWhenNoLayerIsFree)
{
    giveLayersFiles({0, 1, 2});
    dropFiles(editor, {lineFile(QStringLiteral("d"), QStringLiteral("a.txt"), 1),
                       lineFile(QStringLiteral("d"), QStringLiteral("b.txt"), 2),
                       lineFile(QStringLiteral("d"), QStringLiteral("c.txt"), 3)});
    EXPECT_EQ(lineLayers(), (std::vector<int>{3, 3, 3}));
    EXPECT_EQ(editor.layers.captions[3], QStringLiteral("c.txt"));
}

TEST_F(Loading, AFileThatStopsDoesNotKeepTheRestOfADropFromLoading)
{
    const QString bad = mapFile(QStringLiteral("d"), QStringLiteral("bad.txt"), "L 1,0,0,1,1,1,0,0,0\nL 2,x\nL 3,0,0,1,1,1,0,0,0\n");
    const QString good = lineFile(QStringLiteral("d"), QStringLiteral("good.txt"), 4);
    dropFiles(editor, {bad, good});
    EXPECT_EQ(lineLayers(), (std::vector<int>{0, 1}));
    EXPECT_EQ(lineXs(), (std::vector<float>{1, 4}));
}

TEST_F(Loading, BaseLayerLoadFitsTheView)
{
    world.fileDialog.answers = {mapFile(QStringLiteral("b"), QStringLiteral("base.txt"),
                                        "L -100,-100,0,100,100,0,0,0,0\r\n")};
    loadLayerFromMenu(editor, 0);
    // Centred at scale 1, then the largest step of 0.5 at which +-100 fits
    // into 6795 x 7155 twips about that centre.
    EXPECT_EQ(editor.view.currentScale, 33.5f);
    EXPECT_EQ(editor.view.offsetX, 6795.0f / 2);
    EXPECT_EQ(editor.view.offsetY, 7155.0f / 2);
    EXPECT_EQ(world.events.calls, 1);
    EXPECT_EQ(editor.zoom.caption, QStringLiteral("Scale: 33.5"));
}

TEST_F(Loading, OtherLayersOnlyReapplyTheZoom)
{
    editor.tools.zoomAnchor = {1000, 500};
    world.fileDialog.answers = {mapFile(QStringLiteral("b"), QStringLiteral("three.txt"),
                                        "L -100,-100,0,100,100,0,0,0,0\r\n")};
    loadLayerFromMenu(editor, 3);
    // The marker of scale 1 read back through the strip gives about 1.5,
    // zoomed about the anchor.
    EXPECT_NEAR(editor.view.currentScale, 1.5, 1e-4);
    EXPECT_NEAR(editor.view.offsetX, -1000 * (editor.view.currentScale - 1), 0.05);
    EXPECT_NEAR(editor.view.offsetY, -500 * (editor.view.currentScale - 1), 0.05);
    EXPECT_EQ(world.events.calls, 0);
}

TEST_F(Loading, ABadRecordSkipsTheZoomAndTheFit)
{
    for (std::int16_t layer : {0, 2}) {
        editor.view.offsetX = 12;
        world.fileDialog.answers = {mapFile(QStringLiteral("b"), QStringLiteral("bad.txt"),
                                            "L -100,-100,0,100,100,0,0,0,0\r\nP 1,2,3,0,0,0,40000,x\r\nL 5,5,5,5,5,5,0,0,0\r\n")};
        loadLayerFromMenu(editor, layer);
        EXPECT_EQ(editor.view.currentScale, 1);
        EXPECT_EQ(editor.view.offsetX, 12);
        EXPECT_EQ(world.events.calls, 0);
        EXPECT_EQ(lineLayers().back(), layer);
        EXPECT_EQ(editor.doc.labelCount(), 0u);
        EXPECT_EQ(editor.doc.layerFile[layer], world.fileDialog.fileName);
        EXPECT_EQ(editor.doc.activeLayer, layer);
    }
    EXPECT_EQ(lineLayers(), (std::vector<int>{0, 2}));
}

TEST_F(Loading, AnEmptyFileSetsCaptionPathAndFolder)
{
    const QString path = mapFile(QStringLiteral("e"), QStringLiteral("empty.txt"), "");
    world.fileDialog.answers = {path};
    loadLayerFromMenu(editor, 2);
    EXPECT_EQ(editor.doc.lineCount() + editor.doc.labelCount(), 0u);
    EXPECT_EQ(editor.layers.captions[2], QStringLiteral("empty.txt"));
    EXPECT_EQ(editor.doc.layerFile[2], path);
    EXPECT_EQ(world.settings.get(kSettings, kFolderKey, {}), folderPath(QStringLiteral("e")));
    EXPECT_NEAR(editor.view.currentScale, 1.5, 1e-4);
}

TEST(PathParts, SplitAtTheLastSeparator)
{
    const QString s = QDir::separator();
    struct Case {
        QString path;
        QString folder;
        QString name;
    };
    const Case cases[] = {
        {s + "maps" + s + "zone.txt", s + "maps" + s, "zone.txt"},
        {"a" + s + "b" + s + "c", "a" + s + "b" + s, "c"},
        {"folder" + s, "folder" + s, ""},
        {"zone.txt", "", ""},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(folderOf(c.path), c.folder) << c.path.toStdString();
        EXPECT_EQ(fileNameOf(c.path), c.name) << c.path.toStdString();
    }
}

} // namespace
