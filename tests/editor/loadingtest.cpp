#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "view/viewcontrol.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

using namespace plotwell;
using plotwell::test::FakeWorld;
using plotwell::test::writeBytes;

namespace {

const QString kSettings = QStringLiteral("settings");
const QString kFolderKey = QStringLiteral("previousMapFolder");

// Each line as its layer * 100 + its first coordinate.
std::vector<int> lineLayers(const MapDocument& doc)
{
    std::vector<int> layers;
    for (const MapLine& l : doc.lines())
        layers.push_back(l.layer * 100 + int(l.p1.x));
    return layers;
}

class Loading : public ::testing::Test {
protected:
    void SetUp() override
    {
        // The view as start-up leaves it: scale 1 with its marker.
        setCurrentScale(editor.view, editor.doc, 1);
        resetView(editor.view, editor.doc);
    }

    // Writes a map file in a sub-folder of the test folder; its path in native form.
    QString mapFile(const char* name, const QByteArray& text, const char* folder = "maps")
    {
        QDir(dir.path()).mkpath(QLatin1String(folder));
        return QDir::toNativeSeparators(
            writeBytes(dir.filePath(QLatin1String(folder) + QLatin1Char('/') + QLatin1String(name)), text));
    }
    QString lineFile(const char* name, int x, const char* folder = "maps")
    {
        return mapFile(name, "L " + QByteArray::number(x) + ",0,0,1,1,1,0,0,0\r\n", folder);
    }
    QString folderPath(const char* folder = "maps") const
    {
        return QDir::toNativeSeparators(dir.filePath(QLatin1String(folder))) + QDir::separator();
    }
    QString folderSetting() const { return world.settings.get(kSettings, kFolderKey, QStringLiteral("unset")); }

    QTemporaryDir dir;
    FakeWorld world;
    Editor& editor = world.editor;
};

TEST_F(Loading, CancellingEmptiesTheLayerButKeepsItsFile)
{
    loadLayerFromMenu(editor, 1); // no answer: cancelled
    EXPECT_EQ(world.fileDialog.opens, 1);
    EXPECT_FALSE(editor.display.layerChecked[1]);
    EXPECT_EQ(folderSetting(), QStringLiteral("unset"));

    const QString path = lineFile("two.txt", 7);
    world.fileDialog.answers = {path};
    loadLayerFromMenu(editor, 2);
    std::int16_t base = 0;
    editor.doc.activeLayer = 0;
    ASSERT_FALSE(editor.doc.addLine("1,0,0,1,1,1,0,0,0", base, 1));
    ASSERT_EQ(lineLayers(editor.doc), (std::vector<int>{207, 1}));

    loadLayerFromMenu(editor, 2); // cancelled
    EXPECT_EQ(lineLayers(editor.doc), (std::vector<int>{1}));
    EXPECT_EQ(editor.doc.homes[2].caption, QStringLiteral("Layer 2"));
    EXPECT_EQ(editor.doc.homes[2].layerFile, path);
    EXPECT_EQ(editor.doc.activeLayer, 0);
    EXPECT_EQ(markerColor(editor, 2), kWhite);
    EXPECT_TRUE(editor.display.layerChecked[2]);
}

TEST_F(Loading, AMenuLoadShowsAnAlreadyActiveLayerOnlyWhenTheFileWasRead)
{
    // Making the active layer active again is skipped while loading; the
    // menu's own last step shows it, unless the load ended on an error.
    editor.doc.activeLayer = 3;
    world.fileDialog.answers = {folderPath("nowhere") + QStringLiteral("missing.txt")};
    loadLayerFromMenu(editor, 3);
    EXPECT_FALSE(editor.display.layerChecked[3]);
    world.fileDialog.answers = {lineFile("three.txt", 3)};
    loadLayerFromMenu(editor, 3);
    EXPECT_TRUE(editor.display.layerChecked[3]);
}

TEST_F(Loading, TheDialogStartsInTheFolderOfTheLastFileOpened)
{
    world.fileDialog.answers = {lineFile("a.txt", 1, "first")};
    loadLayerFromMenu(editor, 1);
    dropFiles(editor, {lineFile("b.txt", 2, "dropped")});
    loadLayerFromMenu(editor, 3); // cancelled
    world.fileDialog.answers = {lineFile("c.txt", 3, "third")};
    loadLayerFromMenu(editor, 3);
    loadLayerFromMenu(editor, 2); // cancelled
    EXPECT_EQ(world.fileDialog.shownFolders,
              (QStringList{".", folderPath("dropped"), folderPath("dropped"), folderPath("third")}));
    EXPECT_EQ(world.fileDialog.shownFilters, QStringList(4, "Text files (*.txt)|*.txt|All Files(*.*)|*.*"));
}

TEST_F(Loading, DroppedFilesFillTheLayersWithoutAFile)
{
    const struct {
        const char* name;
        std::vector<int> taken;
        int files;
        bool firstStops; // at a bad record after its first line
        std::vector<int> lines;
    } cases[] = {
        {"all free", {}, 2, false, {1, 102}},
        {"two free", {0, 2}, 2, false, {101, 302}},
        {"the last ones follow the previous", {0, 1, 2}, 3, false, {301, 302, 303}},
        {"none free goes to layer 2", {0, 1, 2, 3}, 2, false, {201, 202}},
        {"a file that stops does not stop the drop", {}, 2, true, {1, 102}},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        QStringList paths;
        for (int n : c.taken)
            w.editor.doc.homes[n].layerFile = QStringLiteral("taken.txt");
        for (int i = 1; i <= c.files; ++i)
            paths << lineFile(qPrintable(QStringLiteral("%1.txt").arg(i)), i);
        if (c.firstStops)
            paths[0] = mapFile("bad.txt", "L 1,0,0,1,1,1,0,0,0\nL 2,x\nL 3,0,0,1,1,1,0,0,0\n");
        dropFiles(w.editor, paths);
        EXPECT_EQ(lineLayers(w.editor.doc), c.lines) << c.name;
        const int last = c.lines.back() / 100;
        EXPECT_EQ(w.editor.doc.activeLayer, last) << c.name;
        EXPECT_EQ(w.editor.doc.homes[last].layerFile, paths.back()) << c.name;
        EXPECT_EQ(w.editor.doc.homes[last].caption, QString::number(c.files) + ".txt") << c.name;
    }
}

TEST_F(Loading, TheBaseLayerIsFittedOtherLayersOnlyReapplyTheZoomAndErrorsEndTheLoadSilently)
{
    const QByteArray box = "L -100,-100,0,100,100,0,0,0,0\r\n";
    const struct {
        const char* name;
        std::int16_t layer;
        QByteArray text; // null: the file does not exist
        float scale;
        int pumped;
        std::size_t lines;
    } cases[] = {
        // The largest step of 0.5 at which +-100 fits into 6795 x 7155 twips.
        {"base layer", 0, box, 33.5f, 1, 1},
        // The marker of scale 1 read back through the strip gives 1.5.
        {"layer 3", 3, box, 1.5f, 0, 1},
        {"empty file", 2, "", 1.5f, 0, 0},
        {"bad record in the base layer", 0, box + "P 1,2,3,0,0,0,40000,x\r\n" + box, 1, 0, 1},
        {"bad record in layer 2", 2, box + "L 1,2\r\n", 1, 0, 1},
        {"missing file", 3, QByteArray(), 1, 0, 0},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        setCurrentScale(w.editor.view, w.editor.doc, 1);
        resetView(w.editor.view, w.editor.doc);
        w.editor.view.offsetX = 12;
        const char* name = c.text.isNull() ? "missing.txt" : "map.txt";
        const QString path = c.text.isNull() ? folderPath("nowhere") + name : mapFile(name, c.text);
        w.fileDialog.answers = {path};
        loadLayerFromMenu(w.editor, c.layer);
        EXPECT_NEAR(w.editor.view.currentScale, c.scale, 1e-4) << c.name;
        EXPECT_EQ(w.events.calls, c.pumped) << c.name;
        EXPECT_TRUE(c.scale != 1 || w.editor.view.offsetX == 12) << c.name << ": the view is left as it was";
        EXPECT_EQ(w.editor.doc.lineCount(), c.lines) << c.name;
        for (const MapLine& l : w.editor.doc.lines())
            EXPECT_EQ(l.layer, c.layer) << c.name;
        // Read or not, the layer is active and shown, and carries the file.
        EXPECT_TRUE(w.editor.doc.activeLayer == c.layer && w.editor.display.layerChecked[c.layer]) << c.name;
        EXPECT_EQ(markerColor(w.editor, c.layer), kRed) << c.name;
        EXPECT_EQ(w.editor.doc.homes[c.layer].layerFile, path) << c.name;
        EXPECT_EQ(w.editor.doc.homes[c.layer].caption, name) << c.name;
        EXPECT_EQ(w.settings.get(kSettings, kFolderKey, {}), folderPath(c.text.isNull() ? "nowhere" : "maps"));
        EXPECT_TRUE(w.dialogs.messages.empty()) << c.name;
    }
}

TEST_F(Loading, AZoneBaseDroppedAloneBringsItsSiblings)
{
    // Map packs name siblings in any case: the game's file system ignores it.
    const QString base = lineFile("zone.txt", 10, "zone");
    lineFile("Zone_1.txt", 11, "zone");
    lineFile("ZONE_3.TXT", 13, "zone");
    lineFile("zone_4.txt", 14, "zone"); // not a layer of the zone
    const QString other = lineFile("other.txt", 20, "zone");
    const QString sibling = lineFile("lone.txt", 30, "lone");
    const QString lone1 = lineFile("lone_1.txt", 31, "lone");

    const struct {
        const char* name;
        QStringList dropped;
        bool layerTaken;
        std::vector<int> lines;
    } cases[] = {
        {"a zone fills its layers", {base}, false, {10, 111, 313}},
        {"with a layer taken, the file goes to a free layer", {base}, true, {110}},
        {"two files are two files", {base, other}, false, {10, 120}},
        {"a sibling is no base", {lone1}, false, {31}},
        {"a base without siblings is one file", {other}, false, {20}},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        if (c.layerTaken)
            w.editor.doc.homes[0].layerFile = QStringLiteral("taken.txt");
        dropFiles(w.editor, c.dropped);
        EXPECT_EQ(lineLayers(w.editor.doc), c.lines) << c.name;
    }
    const auto zone = zoneFiles(base);
    ASSERT_TRUE(zone.has_value());
    EXPECT_TRUE((*zone)[2].isEmpty());
    EXPECT_TRUE((*zone)[3].endsWith(QStringLiteral("ZONE_3.TXT")));
    // Where names differ only in case, the one cased like the base wins.
    if (QFileInfo::exists(dir.filePath(QStringLiteral("zone/ZONE_1.txt"))))
        GTEST_SKIP() << "the file system ignores case";
    for (const char* name : {"ZONE_1.txt", "zone_1.txt", "zone_1.TXT"})
        lineFile(name, 11, "zone");
    EXPECT_TRUE(zoneFiles(base)->at(1).endsWith(QStringLiteral("zone_1.txt")));
    EXPECT_TRUE(zoneFiles(sibling).has_value());
    EXPECT_FALSE(zoneFiles(folderPath("zone")).has_value()) << "a folder is no zone";
}

TEST_F(Loading, ACancelledLoadLeavesTheLayerAsItWas)
{
    const QString old = lineFile("old.txt", 5);
    dropFiles(editor, {lineFile("base.txt", 1), lineFile("one.txt", 2), old});
    ASSERT_EQ(lineLayers(editor.doc), (std::vector<int>{1, 102, 205}));
    QByteArray big;
    for (int i = 0; i < 20000; ++i)
        big += "L 7,0,0,1,1,1,0,0,0\r\nP 7,0,0,0,0,0,1,Here\r\n";
    const QString file = mapFile("big.txt", big);

    world.progress.reports = 0;
    world.progress.cancelAt = 2; // after the second piece read
    const ReadResult result = openMapFile(editor, file, 2);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(world.progress.begun, 4);
    EXPECT_EQ(world.progress.ended, 4);
    EXPECT_EQ(lineLayers(editor.doc), (std::vector<int>{1, 102, 205}));
    EXPECT_EQ(editor.doc.labelCount(), 0u);
    EXPECT_EQ(editor.doc.homes[2].layerFile, old);
    EXPECT_EQ(editor.doc.homes[2].caption, QStringLiteral("old.txt"));

    world.progress.cancelAt = 0;
    EXPECT_TRUE(openMapFile(editor, file, 2).complete());
    EXPECT_EQ(editor.doc.labelCount(), 20000u);
}

} // namespace
