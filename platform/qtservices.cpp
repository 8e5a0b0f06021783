#include "platform/qtservices.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>

namespace plotwell {

void QtEventPump::processEvents() { QCoreApplication::processEvents(); }

void QtClipboard::setText(const QString& text)
{
    if (auto* clipboard = QGuiApplication::clipboard())
        clipboard->setText(text);
}

char systemDecimalSeparator()
{
    const QString point = QLocale::system().decimalPoint();
    return point.size() == 1 && point.at(0).unicode() < 128 ? char(point.at(0).unicode()) : '.';
}

} // namespace plotwell
