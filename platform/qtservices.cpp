#include "platform/qtservices.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QProcess>
#include <QUrl>
#include <QGuiApplication>
#include <QLocale>

namespace plotwell {

void QtEventPump::processEvents() { QCoreApplication::processEvents(); }

void QtClipboard::setText(const QString& text)
{
    if (auto* clipboard = QGuiApplication::clipboard())
        clipboard->setText(text);
}

QString QtLauncher::programFolder() const { return QDir::toNativeSeparators(QCoreApplication::applicationDirPath()); }

bool QtLauncher::openDocument(const QString& path)
{
#if defined(Q_OS_WIN)
    return QProcess::startDetached(QStringLiteral("notepad.exe"), {path});
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
