#pragma once

#include "document/colorrgb.h"
#include "document/maprecords.h"

#include <string>
#include <string_view>

namespace plotwell {

// The field text of records the tools create, in the map file's own form,
// handed to the same append operations that read files: a drawn record is
// exactly what a file line with this text would give, its coordinates rounded
// to seven significant digits.

// x1,y1,z,x2,y2,z,r,g,b: both ends at height z.
std::string lineRecordText(const MapPoint& a, const MapPoint& b, float z, ColorRGB colour);
// x1,y1,z1,x2,y2,z2,r,g,b: each end at its own height.
std::string lineRecordText(const MapPoint& a, const MapPoint& b, ColorRGB colour);
// x,y,z,r,g,b,1, text: size 1, the text (Windows-1252 bytes) after one blank.
std::string labelRecordText(const MapPoint& at, float z, ColorRGB colour, std::string_view text);

// The distance of two points in x and y, as a single.
float pointDistance(const MapPoint& a, const MapPoint& b);

} // namespace plotwell
