#include "render/stereo.h"

#include "document/numbertext.h"
#include "render/labelfont.h"

#include <algorithm>
#include <limits>

namespace plotwell {
namespace {

// To the nearest 16-bit integer, halves to even; heights far beyond any real
// map saturate instead of failing.
std::int16_t toInt16Saturated(double v)
{
    const double r = roundHalfEven(v);
    return std::int16_t(std::clamp(r, double(std::numeric_limits<std::int16_t>::min()),
                                   double(std::numeric_limits<std::int16_t>::max())));
}

} // namespace

std::int16_t stereoBrightness(const DisplayOptions& options, float z)
{
    const std::int16_t base = clampInt(toInt16Saturated(double(z) * 0.1 + 128), 50, 255);
    return clampInt(std::int16_t(base + options.brightness), 0, 255);
}

float stereoShift(const DisplayOptions& options, float z, float scale)
{
    return float(double(options.stereo) + (-0.0001 * double(options.stereoZ)) * (double(z) * double(scale)));
}

void drawStereoLine(DrawingSurface& surface, const DisplayOptions& options, float scale, const MapLine& line,
                    const MapPoint& s1, const MapPoint& s2, ColorRGB colour)
{
    // A selected line pulses with the selection flash through its red channel.
    const auto b = std::uint8_t(line.selected ? colour.r : stereoBrightness(options, line.p1.z));

    surface.setPenWidth(2);
    surface.setPenColor({b, 0, 0});
    surface.line(s1.sx, s1.sy, s2.sx, s2.sy);
    // Each end moves by the shift of its own height, so a sloping line tilts in depth.
    surface.setPenColor({0, b, b});
    surface.line(s1.sx + stereoShift(options, line.p1.z, scale), s1.sy, s2.sx + stereoShift(options, line.p2.z, scale),
                 s2.sy);
}

void drawStereoLabel(DrawingSurface& surface, const DisplayOptions& options, float scale, const MapLabel& label,
                     const MapPoint& s, ColorRGB colour)
{
    const auto b = std::uint8_t(stereoBrightness(options, label.pos.z));
    const float d = stereoShift(options, label.pos.z, scale);

    for (int eye = 0; eye < 2; ++eye) {
        const ColorRGB eyeColour = eye == 0 ? ColorRGB{b, 0, 0} : ColorRGB{0, b, b};
        const float offset = float(eye) * d;
        surface.setPenColor(label.selected ? colour : eyeColour);
        surface.setFillColor(eyeColour);
        surface.circle(s.sx + offset, s.sy, scale, eyeColour);
        surface.setTextPosition(s.sx + offset, s.sy);
        surface.setFont(labelFontPoints(scale), false);
        surface.print(label.text);
    }
}

} // namespace plotwell
