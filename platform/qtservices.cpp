#include "platform/qtservices.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QProcess>
#include <QUrl>

namespace plotwell {

void QtEventPump::processEvents()
{
    QCoreApplication::processEvents();
}

void QtClipboard::setText(const QString& text)
{
    if (auto* clipboard = QGuiApplication::clipboard())
        clipboard->setText(text);
}

QString QtLauncher::programFolder() const
{
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
}

bool QtLauncher::openDocument(const QString& path)
{
#if defined(Q_OS_WIN)
    // The command line notepad.exe "C:\folder\readme.txt": the path always
    // in quotes, as Windows programs expect, whatever it holds.
    QProcess notepad;
    notepad.setProgram(QStringLiteral("notepad.exe"));
    notepad.setNativeArguments(QLatin1Char('"') + QDir::toNativeSeparators(path) + QLatin1Char('"'));
    return notepad.startDetached();
#else
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
#endif
}

char systemDecimalSeparator()
{
    const QString point = QLocale::system().decimalPoint();
    return point.size() == 1 && point.at(0).unicode() < 128 ? char(point.at(0).unicode()) : '.';
}

} // namespace plotwell
