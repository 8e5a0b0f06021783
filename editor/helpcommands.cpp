#include "editor/helpcommands.h"

#include "editor/startup.h"
#include "platform/services.h"

#include <QDir>
#include <QFileInfo>

namespace plotwell {
namespace {

const QString kTitle = QStringLiteral("Plotwell");

// Next to the program in a build, or under share/doc/plotwell beside the
// bin folder it is installed in.
QString findReadme(const QString& programFolder)
{
    const QDir folder(programFolder);
    for (const QString& candidate : {folder.filePath(QStringLiteral("readme.txt")),
                                     folder.filePath(QStringLiteral("../share/doc/plotwell/readme.txt"))}) {
        if (QFileInfo(candidate).isFile())
            return QDir::toNativeSeparators(QDir::cleanPath(candidate));
    }
    return QString();
}

} // namespace

QString aboutText(const QString& homePage)
{
    const QStringList lines{QStringLiteral("Plotwell - Offline Everquest map editor"),
                            QStringLiteral("Written by Torvane"), QStringLiteral("Quillmere"),
                            homePage.isEmpty() ? QStringLiteral("See Help > Readme for how to use it") : homePage,
                            QStringLiteral("Version: ") + versionText()};
    return lines.join(QStringLiteral("\r\n"));
}

void showAbout(Dialogs& dialogs)
{
    dialogs.message(aboutText(QStringLiteral(PLOTWELL_HOME_PAGE)), kTitle);
}

void showReadme(Launcher& launcher, Dialogs& dialogs)
{
    const QString readme = findReadme(launcher.programFolder());
    if (readme.isEmpty()) {
        dialogs.message(QStringLiteral("The file readme.txt was not found in %1.").arg(launcher.programFolder()),
                        kTitle);
        return;
    }
    // The viewer runs on its own; the editor does not wait for it.
    if (!launcher.openDocument(readme))
        dialogs.message(QStringLiteral("No program to show text files could be started for %1.").arg(readme), kTitle);
}

} // namespace plotwell
