#include "document/recordfields.h"

#include "document/numbertext.h"

#include <charconv>

namespace plotwell {
namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

const char* skipBlanks(const char* p, const char* end)
{
    while (p != end && *p == ' ')
        ++p;
    return p;
}

// Leading blanks and an optional sign; returns where the number starts.
const char* skipBlanksAndSign(const char* p, const char* end, bool& negative)
{
    p = skipBlanks(p, end);
    negative = false;
    if (p != end && (*p == '-' || *p == '+')) {
        negative = *p == '-';
        ++p;
    }
    return p;
}

// Whole numbers longer than this take the general way; none of them fits.
constexpr int kMaxWholeDigits = 18;

} // namespace

void RecordFields::endFieldAt(const char* p)
{
    const char* const end = m_rest.data() + m_rest.size();
    if (p == end) {
        m_rest = {};
        m_done = true;
    } else {
        m_rest.remove_prefix(std::size_t(p - m_rest.data()) + 1);
    }
}

std::string_view RecordFields::text()
{
    if (m_done)
        return {};
    const auto comma = m_rest.find(',');
    const std::string_view field = m_rest.substr(0, comma);
    endFieldAt(m_rest.data() + field.size());
    return field;
}

// Blanks, a sign, a number that from_chars reads whole, blanks and then the
// comma or the end: exactly the fields that textToSingle accepts without
// falling back on its special cases, read in place. Everything else goes to
// textToSingle itself.
std::optional<float> RecordFields::single()
{
    if (m_done)
        return std::nullopt;
    const char* const end = m_rest.data() + m_rest.size();
    bool negative = false;
    const char* p = skipBlanksAndSign(m_rest.data(), end, negative);
    if (p != end && (isDigit(*p) || *p == '.')) {
        float v = 0;
        const auto [stop, ec] = std::from_chars(p, end, v, std::chars_format::general);
        const char* const after = skipBlanks(stop, end);
        if (ec == std::errc() && (after == end || *after == ',')) {
            if (isBelowPowerOfTen(v))
                v = settleBelowPowerOfTen(v, std::string_view(p, std::size_t(stop - p)));
            endFieldAt(after);
            return negative ? -v : v;
        }
    }
    return textToSingle(text());
}

// Blanks, a sign, digits, blanks and then the comma or the end: a whole
// number that needs no rounding. Fractions, exponents and everything else go
// to the general conversion, which reads them as doubles and rounds.
template <typename Int>
std::optional<Int> RecordFields::whole(long long low, long long high, std::optional<Int> (*general)(std::string_view))
{
    if (m_done)
        return std::nullopt;
    const char* const end = m_rest.data() + m_rest.size();
    bool negative = false;
    const char* p = skipBlanksAndSign(m_rest.data(), end, negative);
    const char* const digits = p;
    long long value = 0;
    for (; p != end && isDigit(*p) && p - digits < kMaxWholeDigits; ++p)
        value = value * 10 + (*p - '0');
    const bool plain = p != digits && (p == end || (*p != '.' && *p != 'e' && *p != 'E' && !isDigit(*p)));
    const char* const after = skipBlanks(p, end);
    if (!plain || (after != end && *after != ','))
        return general(text());
    endFieldAt(after);
    if (negative)
        value = -value;
    if (value < low || value > high)
        return std::nullopt;
    return static_cast<Int>(value);
}

std::optional<std::uint8_t> RecordFields::byte()
{
    return whole<std::uint8_t>(0, 255, textToByte);
}

std::optional<std::int16_t> RecordFields::int16()
{
    return whole<std::int16_t>(-32768, 32767, textToInt16);
}

} // namespace plotwell
