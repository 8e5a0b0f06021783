#include "editor/mapsaving.h"
#include "tests/support/fakes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tests/support/files.h"

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

const QString kTitle = QStringLiteral("Plotwell");
const char* const kLine = "1,2,3,4,5,6,7,8,9";

class SaveAllLayers : public ::testing::Test {
protected:
    FakeWorld world;
    Editor& editor = world.editor;
    QTemporaryDir dir;

    QString path(const char* name) const { return QDir::toNativeSeparators(dir.filePath(QLatin1String(name))); }
    void addLine(std::int16_t layer, const char* fields = kLine) { ASSERT_FALSE(editor.doc.addLine(fields, layer, 1)); }
    void addLabel(std::int16_t layer) { ASSERT_FALSE(editor.doc.addLabel("1,2,3,4,5,6,7,Camp", layer, 1)); }
    QStringList messages() const
    {
        QStringList texts;
        for (const auto& m : world.dialogs.messages)
            texts << (m.title == kTitle ? m.text : QStringLiteral("(wrong title) ") + m.text);
        return texts;
    }
    static QByteArray readFile(const QString& name) { return fileBytes(name); }
    static void writeFile(const QString& name, const QByteArray& bytes) { writeBytes(name, bytes); }
};

TEST_F(SaveAllLayers, AsksForAFileOnceAndThenSavesWithoutAsking)
{
    addLabel(0);
    addLine(0);
    world.fileDialog.initialFolder = QStringLiteral("/where/it/was");
    world.fileDialog.answers = {path("drawn")};
    saveAllLayers(editor);

    EXPECT_EQ(messages(), QStringList{"The layer 0 needs to have a file defined for me to save."});
    EXPECT_EQ(world.fileDialog.shownFolders, QStringList{QStringLiteral("/where/it/was")});
    EXPECT_EQ(world.fileDialog.shownFilters, QStringList{"Text Files (*.txt)|*.txt|All Files (*.*)|*.*"});
    EXPECT_EQ(editor.doc.homes[0].layerFile, path("drawn"));
    EXPECT_EQ(editor.doc.homes[0].caption, QStringLiteral("drawn"));
    // A name typed without an extension is used exactly as typed.
    EXPECT_EQ(readFile(path("drawn")), QByteArray("L 1,2,3,4,5,6,7,8,9\r\nP 1,2,3,4,5,6,7,Camp\r\n"));

    addLine(0, "2,2,2,2,2,2,2,2,2");
    saveAllLayers(editor);
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(world.fileDialog.saves, 1);
    EXPECT_EQ(readFile(path("drawn")),
              QByteArray("L 1,2,3,4,5,6,7,8,9\r\nL 2,2,2,2,2,2,2,2,2\r\nP 1,2,3,4,5,6,7,Camp\r\n"));
}

TEST_F(SaveAllLayers, CancellingSkipsOnlyThatLayerAndLayersWithoutRecordsAreEmptiedOrSkipped)
{
    addLine(0);
    addLabel(2); // a label alone is enough to ask
    editor.doc.homes[3].layerFile = path("three.txt");
    writeFile(editor.doc.homes[3].layerFile, "L 3,3,3,3,3,3,3,3,3\r\n");
    world.fileDialog.fileName = QStringLiteral("/earlier/name.txt");
    world.fileDialog.answers = {QString(), path("two.txt")};
    saveAllLayers(editor);

    // Layer 1 has neither records nor a file: nothing is asked or made for it.
    EXPECT_EQ(messages(),
              (QStringList{"The layer 0 needs to have a file defined for me to save.",
                           "The layer 2 needs to have a file defined for me to save."}));
    EXPECT_EQ(world.fileDialog.saves, 2);
    EXPECT_TRUE(editor.doc.homes[0].layerFile.isEmpty());
    EXPECT_EQ(editor.doc.homes[0].caption, QStringLiteral("Base Layer"));
    EXPECT_EQ(readFile(path("two.txt")), QByteArray("P 1,2,3,4,5,6,7,Camp\r\n"));
    EXPECT_EQ(readFile(path("three.txt")), QByteArray());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), (QStringList{"three.txt", "two.txt"}));
    EXPECT_EQ(world.surface.frames(), 0); // nothing is redrawn

    // The dialog starts with an empty name, not the one used last.
    world.fileDialog.fileName = QStringLiteral("/earlier/name.txt");
    saveAllLayers(editor); // cancelled
    EXPECT_TRUE(world.fileDialog.fileName.isEmpty());
}

TEST_F(SaveAllLayers, AFileThatCannotBeWrittenIsReportedAndTheNextLayerIsSaved)
{
    editor.doc.homes[0].layerFile = path("missing/zero.txt");
    editor.doc.homes[1].layerFile = QDir::toNativeSeparators(dir.path());
    editor.doc.homes[2].layerFile = path("two.txt");
    for (std::int16_t layer : {0, 1, 2})
        addLine(layer);
    saveAllLayers(editor);

    ASSERT_EQ(messages().size(), 2);
    for (int i = 0; i < 2; ++i) {
        const QString start =
            QStringLiteral("The layer %1 could not be saved to %2: ").arg(i).arg(editor.doc.homes[i].layerFile);
        EXPECT_TRUE(messages()[i].startsWith(start)) << messages()[i].toStdString();
        EXPECT_GT(messages()[i].size(), start.size()) << "a reason follows";
    }
    EXPECT_FALSE(QFile::exists(path("missing")));
    EXPECT_EQ(readFile(path("two.txt")), QByteArray("L 1,2,3,4,5,6,7,8,9\r\n"));
}

TEST_F(SaveAllLayers, AFileChangedByAnotherProgramIsReplacedOnlyOnTheNextSave)
{
    const QString file = path("zone.txt");
    writeFile(file, "L 1,2,3,4,5,6,7,8,9\r\n");
    editor.doc.homes[1].layerFile = file;
    editor.doc.homes[1].stamp = FileStamp::of(file);
    addLine(1, "9,9,9,9,9,9,9,9,9");
    writeFile(file, "P 1,2,3,4,5,6,7,Someone_else's_label\r\n");

    saveAllLayers(editor);
    EXPECT_EQ(readFile(file), "P 1,2,3,4,5,6,7,Someone_else's_label\r\n");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains(file) && messages()[0].contains(QStringLiteral("changed by another program")));

    saveAllLayers(editor);
    EXPECT_EQ(readFile(file), "L 9,9,9,9,9,9,9,9,9\r\n");
    EXPECT_EQ(messages().size(), 1);
    // What Plotwell wrote itself is no change by another program.
    addLine(1);
    saveAllLayers(editor);
    EXPECT_EQ(messages().size(), 1);
}

} // namespace
