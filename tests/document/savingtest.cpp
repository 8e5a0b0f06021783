#include "document/mapsaving.h"
#include "tests/support/fakes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace plotwell;
using namespace plotwell::test;

namespace {

const QString kTitle = QStringLiteral("Plotwell");
const QString kFilter = QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*");

class SaveAllLayers : public ::testing::Test {
protected:
    FakeWorld world;
    Editor& editor = world.editor;
    QTemporaryDir dir;

    QString path(const char* name) const { return QDir::toNativeSeparators(dir.filePath(QLatin1String(name))); }

    void addLine(std::int16_t layer, const char* fields = "1,2,3,4,5,6,7,8,9")
    {
        ASSERT_FALSE(editor.doc.addLine(fields, layer, 1));
    }
    void addLabel(std::int16_t layer, const char* fields = "1,2,3,4,5,6,7,Camp")
    {
        ASSERT_FALSE(editor.doc.addLabel(fields, layer, 1));
    }

    static void writeFile(const QString& name, const QByteArray& bytes)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray readFile(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
};

#ifdef Q_OS_LINUX
// Files may not grow beyond a limit while this lives: a disk that fills up
// in the middle of a save, which not even root can write past.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_old);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};
#endif

} // namespace

TEST(LayerHasRecords, AnyLineOrLabelOfTheLayerCounts)
{
    MapDocument doc;
    std::int16_t one = 1, two = 2;
    ASSERT_FALSE(doc.addLine("0,0,0,0,0,0,0,0,0", one, 1));
    ASSERT_FALSE(doc.addLabel("0,0,0,0,0,0,0,x", two, 1));
    EXPECT_FALSE(layerHasRecords(doc, 0));
    EXPECT_TRUE(layerHasRecords(doc, 1));
    EXPECT_TRUE(layerHasRecords(doc, 2));
    EXPECT_FALSE(layerHasRecords(doc, 3));
}

TEST_F(SaveAllLayers, SkipsEmptyLayersWithoutFilesAndEmptiesFilesOfEmptyLayers)
{
    editor.doc.layerFile[1] = path("one.txt");
    writeFile(editor.doc.layerFile[1], "L 1,1,1,1,1,1,1,1,1\r\n");
    const int frames = world.surface.frames();

    saveAllLayers(editor);

    EXPECT_TRUE(world.dialogs.messages.empty());
    EXPECT_EQ(world.fileDialog.saves, 0);
    EXPECT_EQ(readFile(editor.doc.layerFile[1]), QByteArray());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("one.txt")});
    EXPECT_EQ(world.surface.frames(), frames); // nothing is redrawn
}

TEST_F(SaveAllLayers, AsksForAFileOnceAndThenSavesWithoutAsking)
{
    addLabel(0);
    addLine(0);
    world.fileDialog.initialFolder = QStringLiteral("/where/it/was");
    world.fileDialog.fileName = QStringLiteral("/earlier/name.txt");
    world.fileDialog.answers = {path("drawn")};

    saveAllLayers(editor);

    ASSERT_EQ(world.dialogs.messages.size(), 1u);
    EXPECT_EQ(world.dialogs.messages[0].text, QStringLiteral("The layer 0 needs to have a file defined for me to save."));
    EXPECT_EQ(world.dialogs.messages[0].title, kTitle);
    EXPECT_EQ(world.fileDialog.saves, 1);
    EXPECT_EQ(world.fileDialog.shownFolders, QStringList{QStringLiteral("/where/it/was")});
    EXPECT_EQ(world.fileDialog.shownFilters, QStringList{kFilter});
    EXPECT_EQ(editor.doc.layerFile[0], path("drawn"));
    EXPECT_EQ(editor.layers.captions[0], QStringLiteral("drawn"));
    // A name typed without an extension is used exactly as typed.
    EXPECT_EQ(readFile(path("drawn")), QByteArray("L 1,2,3,4,5,6,7,8,9\r\nP 1,2,3,4,5,6,7,Camp\r\n"));

    addLine(0, "2,2,2,2,2,2,2,2,2");
    saveAllLayers(editor);
    EXPECT_EQ(world.dialogs.messages.size(), 1u);
    EXPECT_EQ(world.fileDialog.saves, 1);
    EXPECT_EQ(readFile(path("drawn")),
              QByteArray("L 1,2,3,4,5,6,7,8,9\r\nL 2,2,2,2,2,2,2,2,2\r\nP 1,2,3,4,5,6,7,Camp\r\n"));
}

TEST_F(SaveAllLayers, TheDialogStartsWithAnEmptyName)
{
    addLine(2);
    world.fileDialog.fileName = QStringLiteral("/earlier/name.txt");
    saveAllLayers(editor); // no answer scripted: the user cancels
    EXPECT_TRUE(world.fileDialog.fileName.isEmpty());
    EXPECT_TRUE(editor.doc.layerFile[2].isEmpty());
    EXPECT_EQ(editor.layers.captions[2], QStringLiteral("Layer 2"));
}

TEST_F(SaveAllLayers, CancellingSkipsOnlyThatLayer)
{
    addLine(0);
    addLine(2, "2,2,2,2,2,2,2,2,2");
    editor.doc.layerFile[3] = path("three.txt");
    addLabel(3);
    world.fileDialog.answers = {QString(), path("two.txt")};

    saveAllLayers(editor);

    ASSERT_EQ(world.dialogs.messages.size(), 2u);
    EXPECT_EQ(world.dialogs.messages[1].text, QStringLiteral("The layer 2 needs to have a file defined for me to save."));
    EXPECT_TRUE(editor.doc.layerFile[0].isEmpty());
    EXPECT_EQ(editor.layers.captions[0], QStringLiteral("Base Layer"));
    EXPECT_EQ(readFile(path("two.txt")), QByteArray("L 2,2,2,2,2,2,2,2,2\r\n"));
    EXPECT_EQ(readFile(path("three.txt")), QByteArray("P 1,2,3,4,5,6,7,Camp\r\n"));
}

TEST_F(SaveAllLayers, AFileThatCannotBeWrittenIsReportedAndTheNextLayerIsSaved)
{
    const QString missing = path("missing/zero.txt");
    const QString folder = QDir::toNativeSeparators(dir.path());
    editor.doc.layerFile[0] = missing;
    editor.doc.layerFile[1] = folder;
    editor.doc.layerFile[2] = path("two.txt");
    addLine(0);
    addLine(1);
    addLine(2);

    saveAllLayers(editor);

    ASSERT_EQ(world.dialogs.messages.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        const QString& text = world.dialogs.messages[i].text;
        const QString& file = i == 0 ? missing : folder;
        EXPECT_TRUE(text.startsWith(QStringLiteral("The layer %1 could not be saved to %2: ").arg(i).arg(file)))
            << text.toStdString();
        EXPECT_GT(text.size(), QStringLiteral("The layer 0 could not be saved to : ").size() + file.size());
        EXPECT_EQ(world.dialogs.messages[i].title, kTitle);
    }
    EXPECT_FALSE(QFile::exists(path("missing")));
    EXPECT_EQ(readFile(path("two.txt")), QByteArray("L 1,2,3,4,5,6,7,8,9\r\n"));
}

#ifdef Q_OS_LINUX
TEST_F(SaveAllLayers, AWriteThatFailsHalfWayLeavesTheOldFileAsItWas)
{
    const QByteArray old = "L 9,9,9,9,9,9,9,9,9\r\n";
    editor.doc.layerFile[1] = path("one.txt");
    editor.doc.layerFile[2] = path("two.txt");
    writeFile(editor.doc.layerFile[1], old);
    for (int i = 0; i < 200000; ++i)
        addLine(1, "1234.567,-2345.678,345.6789,1234.567,-2345.678,345.6789,255,255,255");
    addLine(2);
    {
        const FileSizeLimit limit(1 << 20);
        saveAllLayers(editor);
    }
    ASSERT_EQ(world.dialogs.messages.size(), 1u);
    EXPECT_TRUE(world.dialogs.messages[0].text.startsWith(
        QStringLiteral("The layer 1 could not be saved to %1: ").arg(editor.doc.layerFile[1])));
    EXPECT_EQ(readFile(editor.doc.layerFile[1]), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"one.txt", "two.txt"})); // no leftovers
    EXPECT_EQ(readFile(editor.doc.layerFile[2]), QByteArray("L 1,2,3,4,5,6,7,8,9\r\n"));
}
#endif
