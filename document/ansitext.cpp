#include "document/ansitext.h"

#include <array>
#include <cstdint>

namespace plotwell {
namespace {

// Unicode of the bytes 0x80..0x9F; the unassigned 0x81, 0x8D, 0x8F, 0x90 and
// 0x9D map to the C1 control of the same number, as Windows itself does.
constexpr std::array<char16_t, 32> kHighControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t decodeByte(unsigned char byte)
{
    return byte >= 0x80 && byte <= 0x9F ? kHighControls[byte - 0x80] : char16_t(byte);
}

char encodeChar(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == c)
            return char(0x80 + i);
    }
    return '?';
}

} // namespace

QString fromAnsi(std::string_view bytes)
{
    QString text(qsizetype(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (std::size_t i = 0; i < bytes.size(); ++i)
        out[i] = QChar(decodeByte(static_cast<unsigned char>(bytes[i])));
    return text;
}

std::string toAnsi(const QString& text)
{
    std::string bytes;
    bytes.reserve(std::size_t(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        // A character outside the basic plane is one "?", not two.
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        bytes += encodeChar(c.unicode());
    }
    return bytes;
}

} // namespace plotwell
