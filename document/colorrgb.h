#pragma once

#include <cstdint>

namespace plotwell {

// A colour as three bytes. Where it meets a control or the drawing surface it
// becomes the single value r + 256 g + 65536 b.
struct ColorRGB {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;

    constexpr std::uint32_t value() const { return r + 256u * g + 65536u * b; }
    static constexpr ColorRGB fromValue(std::uint32_t v)
    {
        return {std::uint8_t(v & 0xff), std::uint8_t((v >> 8) & 0xff), std::uint8_t((v >> 16) & 0xff)};
    }
    friend constexpr bool operator==(ColorRGB a, ColorRGB b) { return a.value() == b.value(); }
    friend constexpr bool operator!=(ColorRGB a, ColorRGB b) { return !(a == b); }
};

constexpr ColorRGB kBlack{0, 0, 0};
constexpr ColorRGB kWhite{255, 255, 255};
constexpr ColorRGB kRed{255, 0, 0};

} // namespace plotwell
