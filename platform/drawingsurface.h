#pragma once

#include "document/colorrgb.h"

#include <QRectF>

#include <string_view>

class QImage;

namespace plotwell {

// How a picture is combined with what lies beneath it.
enum class RasterOp { Copy, Or };

// The map's drawing surface: a persistent image that keeps what is drawn on it
// until it is cleared. Positions and sizes are in twips (15 to a pixel);
// pen widths are in pixels and font sizes in points.
class DrawingSurface {
public:
    virtual ~DrawingSurface() = default;

    virtual float width() const = 0; // twips
    virtual float height() const = 0; // twips
    virtual void resize(float widthTwips, float heightTwips) = 0;

    virtual ColorRGB backColor() const = 0;
    virtual void setBackColor(ColorRGB colour) = 0;

    virtual void clear() = 0;
    virtual void setPenWidth(int pixels) = 0;
    virtual void setPenColor(ColorRGB colour) = 0;
    // The pen in force, so that a mark drawn over a frame can leave it as it was.
    virtual int penWidth() const = 0;
    virtual ColorRGB penColor() const = 0;
    virtual void setFillColor(ColorRGB colour) = 0;
    virtual void line(float x1, float y1, float x2, float y2) = 0;
    // A filled circle: the inside in the fill colour, the outline in outline.
    virtual void circle(float cx, float cy, float radius, ColorRGB outline) = 0;
    virtual void setTextPosition(float x, float y) = 0;
    virtual void setFont(float points, bool bold) = 0;
    // Text in the pen colour on a transparent background; Windows-1252 bytes.
    virtual void print(std::string_view text) = 0;
    virtual void paintPicture(const QImage& picture, const QRectF& target, const QRectF& source, RasterOp op) = 0;
    // Presents the finished frame.
    virtual void refresh() = 0;
};

} // namespace plotwell
