#include "platform/filetail.h"

#include "tests/support/files.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(FileTail, ReadsWhatIsAppendedAndStartsOverOnlyWhenTheFileIsCutOrAnother)
{
    QTemporaryDir dir;
    const QString log = writeBytes(dir.filePath(QStringLiteral("eqlog_Torvane_quillmere.txt")), "[Mon] old\n");
    FileTail tail(log);
    const auto next = [&tail] {
        const FileTail::Bytes got = tail.read();
        return (got.restarted ? "new file: " : "") + got.bytes.toStdString();
    };
    EXPECT_EQ(next(), "") << "what the log held before is old";
    appendBytes(log, "[Mon] one\n");
    EXPECT_EQ(next(), "[Mon] one\n");
    EXPECT_EQ(next(), "");

    // Some systems move a file's times as it grows: the same file all the same.
    {
        QFile file(log);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QDateTime later = QDateTime::currentDateTime().addDays(1);
        EXPECT_TRUE(file.setFileTime(later, QFileDevice::FileModificationTime));
        file.setFileTime(later, QFileDevice::FileBirthTime); // where the system lets it be set
    }
    appendBytes(log, "[Mon] two\n");
    EXPECT_EQ(next(), "[Mon] two\n");

    writeBytes(log, "[Tue] cut\n");
    EXPECT_EQ(next(), "new file: [Tue] cut\n") << "shorter than what was read";

    // Put in its place by another program: longer, so only its start tells.
    const std::string longer = "[Wed] a log of another day, longer than the one it replaces\n";
    const QString other = writeBytes(dir.filePath(QStringLiteral("other.txt")), QByteArray::fromStdString(longer));
    ASSERT_TRUE(QFile::remove(log) && QFile::rename(other, log));
    EXPECT_EQ(next(), "new file: " + longer);
    appendBytes(log, "[Wed] three\n");
    EXPECT_EQ(next(), "[Wed] three\n") << "a start longer than the one compared stays the same file";

    // Deleted and created again: a new file, even with the same start.
    const QByteArray before = fileBytes(log);
    ASSERT_TRUE(QFile::remove(log));
    EXPECT_EQ(next(), "");
    writeBytes(log, before + "[Thu] again\n");
    EXPECT_EQ(next(), "new file: " + before.toStdString() + "[Thu] again\n");
}

} // namespace
