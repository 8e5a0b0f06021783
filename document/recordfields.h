#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace plotwell {

// The fields of an L or P record's text, taken one at a time from the front.
// A field runs to the next "," or to the end of the text, so "a,b" holds two
// fields, "a," two (the second empty) and "" one. Each number is converted
// exactly as textToSingle, textToByte or textToInt16 convert the field on its
// own; the usual forms are read where they stand instead of being cut out and
// trimmed first, which is what keeps loading a large map fast.
class RecordFields {
public:
    explicit RecordFields(std::string_view text) : m_rest(text) {}

    // True when every field has been taken.
    bool done() const { return m_done; }

    // Each takes the next field; no value when it is not a number of the
    // kind, or when every field has been taken.
    std::optional<float> single();
    std::optional<std::uint8_t> byte();
    std::optional<std::int16_t> int16();
    // The next field as it stands.
    std::string_view text();

private:
    template <typename Int>
    std::optional<Int> whole(long long low, long long high, std::optional<Int> (*general)(std::string_view));
    // Ends the current field at p, which is at its comma or at the end.
    void endFieldAt(const char* p);

    std::string_view m_rest;
    bool m_done = false;
};

} // namespace plotwell
