#pragma once

#include <QString>

#include <ostream>

// Lets test failures show Qt strings as text.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
