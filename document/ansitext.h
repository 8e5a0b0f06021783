#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace plotwell {

// Map files and label texts are Windows-1252 ("ANSI") bytes. These convert
// between those bytes and the text the user sees and types.

// Bytes 0x80..0x9F follow the Windows-1252 table (the five bytes it leaves
// unassigned keep their Latin-1 control characters); every other byte is Latin-1.
QString fromAnsi(std::string_view bytes);
// Characters that Windows-1252 cannot hold become "?".
std::string toAnsi(const QString& text);

} // namespace plotwell
