#include "editor/maploading.h"
#include "editor/mapsaving.h"
#include "editor/recovery.h"
#include "platform/recoveryplace.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/realzones.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

// Zones as real map packs hold them: siblings named in another case than
// their base, CR LF and LF, files that stop part-way and files that are no
// map at all. The user's files must never be cut by a save.
namespace {

struct LayerCount {
    std::size_t lines = 0;
    std::size_t labels = 0;
    friend bool operator==(const LayerCount& a, const LayerCount& b)
    {
        return a.lines == b.lines && a.labels == b.labels;
    }
};

LayerCount countOf(const MapDocument& doc, std::int16_t layer)
{
    LayerCount c;
    for (const MapLine& l : doc.lines())
        c.lines += l.layer == layer;
    for (const MapLabel& l : doc.labels())
        c.labels += l.layer == layer;
    return c;
}

class MapPack : public ::testing::Test {
protected:
    QTemporaryDir dir;
    FakeWorld world;
    Editor& editor = world.editor;

    QString zone(const char* name) { return copyRealZones(dir.path(), name); }
    QStringList messages() const
    {
        QStringList texts;
        for (const auto& m : world.dialogs.messages)
            texts << m.text;
        return texts;
    }
};

// A line drawn on the layer, as the tools add one.
void drawOn(Editor& editor, std::int16_t layer)
{
    editor.doc.activeLayer = layer;
    ASSERT_FALSE(editor.doc.addLine("5,5,0,6,6,0,0,0,0", layer, 1));
}

TEST_F(MapPack, AZoneOpensWithItsSiblingsWhateverTheCaseOfTheirNames)
{
    dropFiles(editor, {zone("trakanon.txt")});
    EXPECT_EQ(countOf(editor.doc, 0), (LayerCount{48, 6}));
    EXPECT_EQ(countOf(editor.doc, 1), (LayerCount{0, 11}));
    EXPECT_EQ(countOf(editor.doc, 2), (LayerCount{12, 0}));
    EXPECT_EQ(editor.doc.homes[1].caption, QStringLiteral("Trakanon_1.txt"));
    EXPECT_EQ(editor.doc.homes[2].caption, QStringLiteral("TRAKANON_2.TXT"));
    EXPECT_TRUE(editor.doc.homes[3].layerFile.isEmpty());

    // LF line ends and a blank line read as CR LF do.
    FakeWorld other;
    dropFiles(other.editor, {zone("firiona.txt")});
    EXPECT_EQ(countOf(other.editor.doc, 0), (LayerCount{30, 5}));
    EXPECT_EQ(countOf(other.editor.doc, 1), (LayerCount{0, 15}));
}

// A file read only in part, or one that is no map text, is left as it is by
// the first save, which says why; the second save replaces it.
TEST_F(MapPack, AFileNotReadWholeSurvivesTheFirstSaveAndTheOtherLayersAreSaved)
{
    const QByteArray longRecord = "L 1,2,3,4,5,6,7,8,9\r\nL " + QByteArray(2 << 20, '7') + "\r\n";
    const struct {
        const char* file;
        QByteArray bytes; // written over the kept file when not empty
        QStringList says;
        LayerCount keeps;
    } cases[] = {
        {"oasis.txt", {}, {"only up to line 150", "lose line 150 and the 163 lines after it"}, {133, 17}},
        {"picture.txt", {}, {"holds NUL bytes", "not a map text file"}, {1, 0}},
        {"long.txt", longRecord, {"only up to line 2", "lose line 2."}, {2, 0}},
        {"tail.txt", "L 1,2,3,4,5,6,7,8,9\nP 1,2\nL 1,1,1,1,1,1,1,1,1", {"lose line 2 and the line after it"}, {2, 0}},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        const QString path = zone(c.file);
        if (!c.bytes.isEmpty())
            writeBytes(path, c.bytes);
        const QByteArray before = fileBytes(path);
        const QString other = zone("firiona.txt");
        openMapFile(w.editor, path, 0);
        openMapFile(w.editor, other, 1);
        drawOn(w.editor, 0);
        drawOn(w.editor, 1);

        saveAllLayers(w.editor);
        EXPECT_EQ(fileBytes(path), before) << c.file;
        ASSERT_EQ(w.dialogs.messages.size(), 1u) << c.file;
        const QString said = w.dialogs.messages[0].text;
        EXPECT_TRUE(said.contains(path) && said.contains("layer 0 was not saved")
                    && said.contains("Choose Save all layers again to replace it."))
            << said.toStdString();
        for (const QString& part : c.says)
            EXPECT_TRUE(said.contains(part)) << said.toStdString();
        EXPECT_TRUE(fileBytes(other).contains("\nL 5,5,0,6,6,0,0,0,0\r\n")) << "the other layer is saved";

        saveAllLayers(w.editor);
        EXPECT_EQ(w.dialogs.messages.size(), 1u) << c.file;
        FakeWorld back;
        EXPECT_TRUE(openMapFile(back.editor, path, 0).complete()) << c.file;
        EXPECT_EQ(countOf(back.editor.doc, 0), c.keeps) << c.file;
    }
}

TEST_F(MapPack, OneFileInTwoLayersIsSavedFromBothWithoutAFalseWarning)
{
    const QString path = zone("trakanon.txt");
    openMapFile(editor, path, 0);
    openMapFile(editor, path, 2);
    drawOn(editor, 0);
    saveAllLayers(editor);
    EXPECT_TRUE(messages().isEmpty()) << messages().join('\n').toStdString();
    // Layer 2 was written last: the file holds what it held.
    FakeWorld back;
    openMapFile(back.editor, path, 0);
    EXPECT_EQ(countOf(back.editor.doc, 0), (LayerCount{48, 6}));
    EXPECT_FALSE(editor.history.layerModified(0) || editor.history.layerModified(2));
}

TEST_F(MapPack, ARecoveredLayerKeepsItsFileGuarded)
{
    QTemporaryDir copies;
    FakeRecoveryPlace place(copies.path());
    const QString path = zone("oasis.txt");
    const QByteArray before = fileBytes(path);
    {
        FakeWorld w;
        RecoveryKeeper keeper(place);
        dropFiles(w.editor, {path}); // read in part, so not saved: it has a copy
        ASSERT_TRUE(keeper.flush(w.editor));
    }
    RecoveryKeeper(place).recover(editor);
    EXPECT_EQ(countOf(editor.doc, 0), (LayerCount{132, 17}));
    saveAllLayers(editor);
    EXPECT_EQ(fileBytes(path), before);
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("only up to line 150")) << messages()[0].toStdString();
}

} // namespace
