#include "document/mapwriter.h"
#include "tests/support/childrun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "tests/support/files.h"

#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace plotwell;

namespace {

const QByteArray kOldText = "L 9,9,9,9,9,9,9,9,9\r\nP 1,2,3,0,0,0,1,Old_Camp\r\n";

// Over a megabyte of map text on layer 1.
MapDocument largeLayer()
{
    MapDocument doc;
    for (int i = 0; i < 20000; ++i) {
        std::int16_t layer = 1;
        doc.addLine("1234.567,-2345.678,345.6789,1234.567,-2345.678,345.6789,255,255,255", layer, 1);
    }
    return doc;
}

class WriteFailure : public ::testing::Test {
protected:
    QTemporaryDir dir;
    const MapDocument doc = largeLayer();

    QString path(const char* name) const { return dir.filePath(QLatin1String(name)); }
    QString writeOld(const char* name) const { return test::writeBytes(path(name), kOldText); }
    static QByteArray bytesOf(const QString& name) { return test::fileBytes(name); }
    QStringList entries() const
    {
        return QDir(dir.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }
};

// Saving replaces the file by renaming a new one over it: a folder, a pipe
// or a device in its place is refused and stays what it was.
TEST_F(WriteFailure, ATargetThatCannotBeAFileIsRefusedWithTheReason)
{
    writeOld("old.txt");
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder")));
    EXPECT_EQ(writeLayerFile(path("folder"), doc, 1).error.toStdString(), "it is a folder, not a file");
    EXPECT_EQ(writeLayerFile(path("missing/new.txt"), doc, 1).error.toStdString(),
              test::openErrorOf(path("missing/new.txt"), QIODevice::WriteOnly).toStdString());
    EXPECT_TRUE(QDir(path("folder")).isEmpty());
#ifdef Q_OS_UNIX
    ASSERT_EQ(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);
    EXPECT_EQ(writeLayerFile(path("fifo"), doc, 1).error.toStdString(),
              "it is not a regular file (a pipe, a device or a socket)");
    EXPECT_FALSE(QFileInfo(path("fifo")).isFile()) << "the pipe is still a pipe";
    EXPECT_EQ(entries(), (QStringList{"fifo", "folder", "old.txt"}));
#endif
    EXPECT_EQ(bytesOf(path("old.txt")), kOldText);
}

#ifdef Q_OS_UNIX
// The disk fills up part-way: files may not grow beyond 64 KB in the child
// that saves, which not even root can write past.
TEST_F(WriteFailure, AFullDiskLeavesTheOldFileByteForByte)
{
    const QString target = writeOld("one.txt");
    const auto error =
        test::runInChild({false, 1 << 16}, [&] { return writeLayerFile(target, doc, 1).error.toStdString(); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(*error, "File too large; the file was left as it was");
    EXPECT_EQ(bytesOf(target), kOldText);
    EXPECT_EQ(entries(), QStringList{"one.txt"}) << "no temporary file is left behind";
}

TEST_F(WriteFailure, AFullDeviceGivesTheSystemsReason)
{
    QFile full(QStringLiteral("/dev/full"));
    if (!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        GTEST_SKIP() << "no /dev/full here";
    const WriteResult result = writeLayerRecords(full, doc, 1);
    EXPECT_EQ(result.error.toStdString(), "No space left on device");
    EXPECT_EQ(result.bytes, 0u);
}

// A folder the user may not write in: root may write anywhere, so the save
// runs in a child that has dropped to an ordinary user.
TEST_F(WriteFailure, AReadOnlyFolderLeavesTheOldFileByteForByte)
{
    const QString target = writeOld("one.txt");
    const QByteArray folder = QFile::encodeName(dir.path());
    // The file is the user's own, so that only the folder is in the way.
    if (geteuid() == 0) {
        ASSERT_EQ(chown(QFile::encodeName(target).constData(), 65534, 65534), 0);
    }
    ASSERT_EQ(chmod(folder.constData(), 0555), 0);
    const auto error = test::runInChild({true, 0}, [&] { return writeLayerFile(target, doc, 1).error.toStdString(); });
    const auto newFile =
        test::runInChild({true, 0}, [&] { return writeLayerFile(path("new.txt"), doc, 1).error.toStdString(); });
    chmod(folder.constData(), 0700);
    if (!error || !newFile)
        GTEST_SKIP() << "cannot run a child process as an ordinary user here";
    EXPECT_EQ(*error, "Permission denied");
    EXPECT_EQ(*newFile, "Permission denied");
    EXPECT_EQ(bytesOf(target), kOldText);
    EXPECT_EQ(entries(), QStringList{"one.txt"});
}
#endif

} // namespace
