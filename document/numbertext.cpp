#include "document/numbertext.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <type_traits>

namespace plotwell {
namespace {

std::string_view trimBlanks(std::string_view s)
{
    while (!s.empty() && s.front() == ' ')
        s.remove_prefix(1);
    while (!s.empty() && s.back() == ' ')
        s.remove_suffix(1);
    return s;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Splits off an optional sign and checks that a digit or "." follows, so that
// "inf", "nan" and doubled signs are refused before from_chars sees them.
bool takeSign(std::string_view& s, bool& negative)
{
    negative = false;
    if (!s.empty() && (s.front() == '+' || s.front() == '-')) {
        negative = s.front() == '-';
        s.remove_prefix(1);
    }
    return !s.empty() && (isDigit(s.front()) || s.front() == '.');
}

// True when an out-of-range number is too small rather than too large: its
// first significant digit stands after the decimal point once the exponent is
// applied. s holds only digits, one ".", and an optional exponent.
bool isUnderflow(std::string_view s)
{
    const auto e = std::min(s.find_first_of("eE"), s.size());
    const std::string_view mantissa = s.substr(0, e);
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto first = mantissa.find_first_not_of("0.");
    if (first == std::string_view::npos)
        return true; // all zeros cannot overflow
    // The power of ten of the first significant digit, before the exponent.
    long long magnitude = first < point ? (long long)(point - first) - 1 : (long long)point - (long long)first;
    if (e < s.size()) {
        std::string_view exponent = s.substr(e + 1);
        const bool negative = !exponent.empty() && exponent.front() == '-';
        if (!exponent.empty() && (exponent.front() == '-' || exponent.front() == '+'))
            exponent.remove_prefix(1);
        long long value = 0;
        for (char c : exponent)
            value = std::min(value * 10 + (c - '0'), 1LL << 40); // saturates far beyond any range
        magnitude += negative ? -value : value;
    }
    return magnitude < 0;
}

// The conversion of an unsigned number text: anything from_chars does not
// take whole is refused, and so is a magnitude beyond the type's range, while
// one too small for it becomes zero.
template <typename Real> std::optional<Real> generalNumber(std::string_view s, bool negative)
{
    Real v = 0;
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), v, std::chars_format::general);
    if (end != s.data() + s.size())
        return std::nullopt;
    if (ec == std::errc::result_out_of_range) {
        if (!isUnderflow(s))
            return std::nullopt;
        v = 0;
    } else if (ec != std::errc()) {
        return std::nullopt;
    }
    if constexpr (std::is_same_v<Real, float>) {
        if (isBelowPowerOfTen(v))
            v = settleBelowPowerOfTen(v, s);
    }
    return negative ? -v : v;
}

// The 7 significant digits the writer gives a value (as a double, which
// holds every single exactly), in to_chars' own case.
std::string_view sevenDigits(double v, char (&out)[32])
{
    const auto end = std::to_chars(out, out + sizeof out, v, std::chars_format::general, 7).ptr;
    return std::string_view(out, std::size_t(end - out));
}

// Whole numbers are read as doubles, then rounded half to even.
template <typename Int> std::optional<Int> textToWhole(std::string_view field, double low, double high)
{
    std::string_view s = trimBlanks(field);
    bool negative = false;
    if (!takeSign(s, negative))
        return std::nullopt;
    const auto v = generalNumber<double>(s, negative);
    if (!v)
        return std::nullopt;
    const double r = roundHalfEven(*v);
    if (!(r >= low && r <= high))
        return std::nullopt;
    return static_cast<Int>(r);
}

} // namespace

float settleBelowPowerOfTen(float v, std::string_view unsignedText)
{
    // Both powers of ten are ordinary doubles, with digits to spare.
    double exact = 0;
    std::from_chars(unsignedText.data(), unsignedText.data() + unsignedText.size(), exact, std::chars_format::general);
    char wantBuffer[32];
    char aboveBuffer[32];
    const float above = std::nextafter(v, 1e38f);
    return sevenDigits(exact, wantBuffer) == sevenDigits(above, aboveBuffer) ? above : v;
}

std::optional<float> textToSingle(std::string_view field)
{
    std::string_view s = trimBlanks(field);
    bool negative = false;
    if (!takeSign(s, negative))
        return std::nullopt;
    return generalNumber<float>(s, negative);
}

std::optional<std::uint8_t> textToByte(std::string_view field)
{
    return textToWhole<std::uint8_t>(field, 0, 255);
}

std::optional<std::int16_t> textToInt16(std::string_view field)
{
    return textToWhole<std::int16_t>(field, -32768, 32767);
}

char* writeSingle(char* out, float value)
{
    if (value == 0) { // also a negative zero, which the map format writes as 0
        *out = '0';
        return out + 1;
    }
    const auto result = std::to_chars(out, out + kMaxSingleText, value, std::chars_format::general, 7);
    for (char* p = out; p != result.ptr; ++p) {
        if (*p >= 'a' && *p <= 'z')
            *p = char(*p - 'a' + 'A');
    }
    return result.ptr;
}

std::string singleToText(float value)
{
    char buffer[kMaxSingleText];
    return std::string(buffer, writeSingle(buffer, value));
}

std::string withDecimalSeparator(std::string text, char separator)
{
    for (char& c : text) {
        if (c == '.')
            c = separator;
    }
    return text;
}

double roundHalfEven(double v)
{
    return std::nearbyint(v); // the default rounding mode is to nearest, ties to even
}

double leadingNumber(std::string_view text, bool ignoreBlanksAnywhere)
{
    std::string kept;
    if (ignoreBlanksAnywhere) {
        for (char c : text) {
            if (c != ' ' && c != '\t' && c != '\n')
                kept += c;
        }
        text = kept;
    } else {
        while (!text.empty() && text.front() == ' ')
            text.remove_prefix(1);
    }

    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    const std::size_t start = i;
    std::size_t digits = 0;
    while (i < text.size() && isDigit(text[i])) {
        ++i;
        ++digits;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) {
            ++i;
            ++digits;
        }
    }
    if (digits == 0)
        return 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-'))
            ++j;
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j]))
                ++j;
            i = j;
        }
    }
    double v = 0;
    const auto [end, ec] = std::from_chars(text.data() + start, text.data() + i, v, std::chars_format::general);
    (void)end;
    if (ec == std::errc::result_out_of_range)
        v = isUnderflow(text.substr(start, i - start)) ? 0.0 : HUGE_VAL;
    return negative ? -v : v;
}

float singleAsWritten(float value)
{
    if (!std::isfinite(value))
        return value;
    char buffer[kMaxSingleText];
    const char* end = writeSingle(buffer, value);
    return textToSingle(std::string_view(buffer, std::size_t(end - buffer))).value_or(value);
}

} // namespace plotwell
