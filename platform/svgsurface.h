#pragma once

#include "platform/drawingsurface.h"
#include "platform/textcache.h"

#include <QImage>
#include <QString>
#include <QXmlStreamWriter>

#include <memory>

class QIODevice;

namespace plotwell {

class QImageSurface;

// The drawing surface as an SVG drawing written to a device: lines are SVG
// lines, circles circles and printed text text, so that the drawing stays
// sharp when scaled for print and each element can be edited. One pixel of
// the drawing is 15 twips, and its fonts are sized at 96 dots per inch as on
// the image surface.
//
// beginLayer puts what follows into a group of its own, which drawing
// programs such as Inkscape show as a layer of that name.
//
// SVG has no raster operations, so pictures (the underlay and the tracing
// paper) are combined on an image surface of the same size first; that image
// goes into the drawing as one embedded PNG, in a group of its own, before
// anything is drawn over it.
class SvgSurface : public DrawingSurface {
public:
    SvgSurface(QIODevice& device, QSize pixels, const QString& title);
    ~SvgSurface() override;

    // Ends the group drawn into and starts one named name.
    void beginLayer(const QString& name);
    // Ends the drawing; false when the device could not take all of it.
    bool finish();

    float width() const override { return m_widthTwips; }
    float height() const override { return m_heightTwips; }
    // The size of a drawing is fixed when it is begun.
    void resize(float, float) override {}

    ColorRGB backColor() const override { return m_back; }
    void setBackColor(ColorRGB colour) override { m_back = colour; }

    void clear() override;
    void setPenWidth(int pixels) override { m_penWidth = pixels < 1 ? 1 : pixels > 255 ? 255 : pixels; }
    void setPenColor(ColorRGB colour) override { m_pen = colour; }
    int penWidth() const override { return m_penWidth; }
    ColorRGB penColor() const override { return m_pen; }
    void setFillColor(ColorRGB colour) override { m_fill = colour; }
    void line(float x1, float y1, float x2, float y2) override;
    void circle(float cx, float cy, float radius, ColorRGB outline) override;
    void setTextPosition(float x, float y) override;
    void setFont(float points, bool bold) override;
    void print(std::string_view text) override;
    void paintPicture(const QImage& picture, const QRectF& target, const QRectF& source, RasterOp op) override;
    void refresh() override {}

private:
    // Puts the pictures painted so far into the drawing.
    void flushPictures();
    void endGroup();
    bool outside(float left, float top, float right, float bottom) const;

    float m_widthTwips;
    float m_heightTwips;
    ColorRGB m_back = kWhite;
    ColorRGB m_pen;
    ColorRGB m_fill;
    int m_penWidth = 1;
    float m_textX = 0;
    float m_textY = 0;
    QXmlStreamWriter m_xml;
    bool m_open = true;
    bool m_inGroup = false;
    int m_groups = 0;
    QImage m_metrics; // the 96 dots per inch fonts are measured at
    TextCache m_text;
    QString m_fontFamily;
    float m_ascent = 0;
    std::unique_ptr<QImageSurface> m_pictures; // pictures not yet in the drawing
};

} // namespace plotwell
