#include "editor/helpcommands.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(About, FiveLinesEndingInTheVersion)
{
    FakeWorld w;
    showAbout(w.dialogs);
    ASSERT_EQ(w.dialogs.messages.size(), 1u);
    const QStringList lines = w.dialogs.messages[0].text.split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[4], QStringLiteral("Version: 2.2.0")) << "from the build's version";
    EXPECT_EQ(w.dialogs.messages[0].title, QStringLiteral("Plotwell"));
    // The fourth line is the home page the build was given, or else where the readme is.
    EXPECT_TRUE(aboutText(QString()).split(QStringLiteral("\r\n"))[3].contains(QStringLiteral("Help > Readme")));
    EXPECT_EQ(aboutText(QStringLiteral("https://maps.test")).split(QStringLiteral("\r\n"))[3],
              QStringLiteral("https://maps.test"));
}

TEST(Readme, OpensTheFileBesideTheProgramOrInItsDocumentationFolder)
{
    QTemporaryDir dir;
    const auto touch = [&](const QString& relative) {
        QDir().mkpath(QFileInfo(dir.filePath(relative)).path());
        writeBytes(dir.filePath(relative), {});
    };
    FakeWorld w;
    w.launcher.folder = QDir::toNativeSeparators(dir.filePath(QStringLiteral("bin")));
    QDir().mkpath(w.launcher.folder);

    showReadme(w.launcher, w.dialogs); // nowhere yet
    ASSERT_EQ(w.dialogs.messages.size(), 1u);
    EXPECT_TRUE(w.dialogs.messages[0].text.contains(QStringLiteral("readme.txt")));
    EXPECT_TRUE(w.launcher.opened.isEmpty());

    touch(QStringLiteral("share/doc/plotwell/readme.txt"));
    showReadme(w.launcher, w.dialogs);
    touch(QStringLiteral("bin/readme.txt"));
    showReadme(w.launcher, w.dialogs);
    showReadme(w.launcher, w.dialogs); // twice: two viewers
    EXPECT_EQ(w.launcher.opened,
              (QStringList{QDir::toNativeSeparators(dir.filePath(QStringLiteral("share/doc/plotwell/readme.txt"))),
                           QDir::toNativeSeparators(dir.filePath(QStringLiteral("bin/readme.txt"))),
                           QDir::toNativeSeparators(dir.filePath(QStringLiteral("bin/readme.txt")))}));

    w.launcher.viewerFound = false;
    showReadme(w.launcher, w.dialogs);
    ASSERT_EQ(w.dialogs.messages.size(), 2u);
    EXPECT_TRUE(w.dialogs.messages[1].text.startsWith(QStringLiteral("No program to show text files")));
}

} // namespace
