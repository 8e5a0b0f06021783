#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plotwell {

// Number text as the map format and the program's captions use it: "." is the
// decimal point whatever the user's locale, blanks around a number are ignored,
// and conversions to whole numbers round half to even.

// A whole field as a single: blanks, optional sign, digits with an optional
// fraction and exponent, blanks. Anything else, or a magnitude beyond the
// single range, gives no value.
std::optional<float> textToSingle(std::string_view field);
// Just below a power of ten, 7 significant digits step ten times finer than
// above it, and in two places singles step wider still: the single nearest
// to 1E+28 lies below it and writes as "9.999999E+27", and the one nearest to
// 1E-38 writes as "9.999999E-39". Text the writer wrote as "1E+28" (from the
// single above) would then read back as one that writes otherwise. So a
// number whose nearest single is one of these two, and which is 1E+28 or
// 1E-38 to 7 digits, reads as the single above, which writes as it does.
// Every other single writes text that reads back to a single writing the same.
inline bool isBelowPowerOfTen(float magnitude)
{
    return magnitude == 0x1.027e72p+93f || magnitude == 0x1.b38fb8p-127f;
}
// v is the magnitude read from unsignedText, the number without its sign.
float settleBelowPowerOfTen(float v, std::string_view unsignedText);

// As textToSingle, then rounded half to even; outside 0..255 gives no value.
std::optional<std::uint8_t> textToByte(std::string_view field);
// As textToSingle, then rounded half to even; outside the 16-bit range gives no value.
std::optional<std::int16_t> textToInt16(std::string_view field);

// The writer's coordinate form: at most 7 significant digits, no trailing
// zeros, scientific ("1.5E-05", "1E+07") below 1E-04 or from 1E+07, and a
// negative zero written as "0". Identical to C's "%.7G".
constexpr int kMaxSingleText = 16;
// Writes the form at out (room for kMaxSingleText chars); returns the end.
char* writeSingle(char* out, float value);
std::string singleToText(float value);
// The single that the writer's form of value reads back as, so that what a
// record holds is what its file will hold; value itself when not finite.
float singleAsWritten(float value);

// The same number with the locale's decimal separator instead of ".".
std::string withDecimalSeparator(std::string text, char separator);

// Rounds half to even to the nearest whole number.
double roundHalfEven(double v);

// The number at the start of a text: optional sign, digits, one ".", optional
// exponent, up to the first character that does not fit; 0 when there is none.
// Leading blanks are skipped; with ignoreBlanksAnywhere, blanks, tabs and line
// feeds anywhere in the text are dropped first.
double leadingNumber(std::string_view text, bool ignoreBlanksAnywhere = false);

} // namespace plotwell
