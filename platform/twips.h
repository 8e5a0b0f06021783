#pragma once

#include "document/colorrgb.h"

#include <QColor>
#include <QRect>

#include <cmath>

namespace plotwell {

// Positions on the drawing surface and the window's layout are in twips; one
// logical pixel is 15 twips (96 dots per inch). Qt's device-pixel ratio takes
// care of high-density screens, so the twip constants mean the same everywhere.
constexpr double kTwipsPerPixel = 15.0;

inline int px(double twips)
{
    return int(std::lround(twips / kTwipsPerPixel));
}
inline float twips(double pixels)
{
    return float(pixels * kTwipsPerPixel);
}
inline QRect twipRect(double left, double top, double width, double height)
{
    return QRect(px(left), px(top), px(width), px(height));
}

inline QColor toQColor(ColorRGB c)
{
    return QColor(c.r, c.g, c.b);
}

} // namespace plotwell
