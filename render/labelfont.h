#pragma once

#include <cmath>

namespace plotwell {

// The point size of label text at a scale: Int(scale / 10) + 10, rounding
// down, so 0.5 gives 10, 25 gives 12 and 100 gives 20. The label's own size
// code plays no part.
inline float labelFontPoints(float scale)
{
    return std::floor(scale / 10) + 10;
}

} // namespace plotwell
