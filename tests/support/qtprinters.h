#pragma once

#include <QRect>
#include <QString>

#include <ostream>

// Lets test failures show Qt strings as text, and boxes as their place and size.
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QRect& r, std::ostream* os)
{
    *os << r.width() << 'x' << r.height() << '+' << r.x() << '+' << r.y();
}
