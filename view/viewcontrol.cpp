#include "view/viewcontrol.h"

#include "document/numbertext.h"

#include <charconv>
#include <cmath>

namespace plotwell {

bool adjustOffset(View& view, float x, float y)
{
    const float offsetX = view.offsetX + x;
    const float offsetY = view.offsetY + y;
    if (!std::isfinite(offsetX) || !std::isfinite(offsetY))
        return false;
    view.offsetX = offsetX;
    view.offsetY = offsetY;
    return true;
}

bool setCurrentScale(View& view, MapDocument& doc, float newScale)
{
    if (std::isnan(newScale))
        return false;
    if (newScale > 100)
        newScale = 100;
    if (newScale < 0.5f)
        newScale = 0.5f;
    view.currentScale = newScale;
    rescaleAll(view, doc);

    // The marker stands at scale / 99.5 of the strip's width, at most its right end.
    const float r = view.currentScale / 99.5f;
    float w = ZoomStrip::kWidth * r;
    if (w < 0)
        w = 0;
    if (w > ZoomStrip::kWidth)
        w = ZoomStrip::kWidth;
    view.zoom.markerX1 = ZoomStrip::kLeft + w;
    return true;
}

QString scaleText(float scale, char decimalSeparator)
{
    const double rounded = roundHalfEven(double(scale) * 1e5) / 1e5;
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, rounded, std::chars_format::fixed, 5);
    std::string text(buffer, result.ptr);
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    if (text == "-0")
        text = "0";
    return QString::fromStdString(withDecimalSeparator(text, decimalSeparator));
}

QString singleCaption(float value)
{
    return QString::fromStdString(singleToText(value));
}

void rescaleAll(View& view, MapDocument& doc)
{
    view.zoom.caption = QStringLiteral("Scale: ") + scaleText(view.currentScale, view.decimalSeparator);
    doc.rescale(view.currentScale);
}

void resetView(View& view, MapDocument& doc)
{
    view.currentScale = 1;
    rescaleAll(view, doc);
    view.offsetX = 0;
    view.offsetY = 0;
}

void showLocation(View& view, float x, float y)
{
    showWorldLocation(view, toWorld(view, x, y));
}

void showWorldLocation(View& view, const MapPoint& world)
{
    MapPoint p = world;
    p.z = view.currentZ;
    view.readout.x = singleCaption(p.x);
    view.readout.y = singleCaption(p.y);
    view.readout.z = singleCaption(p.z);
    // The read-out gives the negated world y first, then the negated world x.
    const char sep = view.decimalSeparator;
    view.readout.loc = QStringLiteral("Loc: ") + QString::fromStdString(withDecimalSeparator(singleToText(-p.y), sep))
        + QStringLiteral(" , ") + QString::fromStdString(withDecimalSeparator(singleToText(-p.x), sep));
}

} // namespace plotwell
