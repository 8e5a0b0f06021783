#include "tools/recordtext.h"

#include "document/numbertext.h"

#include <cmath>

namespace plotwell {
namespace {

void appendNumber(std::string& text, float value)
{
    char buffer[kMaxSingleText];
    text.append(buffer, writeSingle(buffer, value));
    text += ',';
}

void appendColour(std::string& text, ColorRGB colour)
{
    text += std::to_string(colour.r) + ',' + std::to_string(colour.g) + ',' + std::to_string(colour.b);
}

} // namespace

std::string lineRecordText(const MapPoint& a, const MapPoint& b, float z, ColorRGB colour)
{
    MapPoint first = a;
    MapPoint second = b;
    first.z = z;
    second.z = z;
    return lineRecordText(first, second, colour);
}

std::string lineRecordText(const MapPoint& a, const MapPoint& b, ColorRGB colour)
{
    std::string text;
    for (const float v : {a.x, a.y, a.z, b.x, b.y, b.z})
        appendNumber(text, v);
    appendColour(text, colour);
    return text;
}

std::string labelRecordText(const MapPoint& at, float z, ColorRGB colour, std::string_view labelText)
{
    std::string text;
    for (const float v : {at.x, at.y, z})
        appendNumber(text, v);
    appendColour(text, colour);
    text += ",1, ";
    text += labelText;
    return text;
}

float pointDistance(const MapPoint& a, const MapPoint& b)
{
    const double dy = double(a.y) - double(b.y);
    const double dx = double(a.x) - double(b.x);
    return float(std::sqrt(dy * dy + dx * dx));
}

} // namespace plotwell
