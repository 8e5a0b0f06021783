#pragma once

#include "platform/drawingsurface.h"
#include "platform/textcache.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace plotwell::test {

// The plainest drawing surface there is: every operation goes straight to
// QPainter as it comes, on an image of ratio device pixels to a logical one,
// with pens of whole device pixels. The real surface must give the very same pixels.
class NaiveSurface : public DrawingSurface {
public:
    NaiveSurface(int widthPixels, int heightPixels, double ratio = 1)
        : m_image(qCeil(widthPixels * ratio), qCeil(heightPixels * ratio), QImage::Format_RGB32), m_ratio(ratio)
    {
        m_image.setDevicePixelRatio(ratio);
        m_image.setDotsPerMeterX(3780);
        m_image.setDotsPerMeterY(3780);
        m_image.fill(Qt::white);
        m_text.setFont(8.25f, false, &m_image);
    }

    const QImage& image() const { return m_image; }

    float width() const override { return float(m_image.deviceIndependentSize().width()) * 15; }
    float height() const override { return float(m_image.deviceIndependentSize().height()) * 15; }
    void resize(float, float) override {}
    ColorRGB backColor() const override { return m_back; }
    void setBackColor(ColorRGB c) override { m_back = c; }
    void clear() override { m_image.fill(colour(m_back)); }
    void setPenWidth(int px) override { m_width = px; }
    void setPenColor(ColorRGB c) override { m_pen = c; }
    int penWidth() const override { return m_width; }
    ColorRGB penColor() const override { return m_pen; }
    void setFillColor(ColorRGB c) override { m_fill = c; }
    void line(float x1, float y1, float x2, float y2) override
    {
        QPainter p(&m_image);
        p.setPen(pen(m_pen));
        p.drawLine(QLineF(x1 / 15, y1 / 15, x2 / 15, y2 / 15));
    }
    void circle(float cx, float cy, float r, ColorRGB outline) override
    {
        QPainter p(&m_image);
        p.setPen(pen(outline));
        p.setBrush(colour(m_fill));
        p.drawEllipse(QPointF(cx / 15, cy / 15), double(r / 15), double(r / 15));
    }
    void setTextPosition(float x, float y) override { m_x = x, m_y = y; }
    void setFont(float points, bool bold) override { m_text.setFont(points, bold, &m_image); }
    void print(std::string_view text) override
    {
        QPainter p(&m_image);
        p.setPen(pen(m_pen));
        p.setFont(m_text.font());
        p.drawStaticText(QPointF(m_x / 15, m_y / 15), m_text.text(text));
    }
    void paintPicture(const QImage&, const QRectF&, const QRectF&, RasterOp) override {}
    void refresh() override {}

private:
    static QColor colour(ColorRGB c) { return QColor(c.r, c.g, c.b); }
    QPen pen(ColorRGB c) const
    {
        const double width = std::max(1.0, std::round(m_width * m_ratio)) / m_ratio;
        return QPen(colour(c), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    }

    QImage m_image;
    double m_ratio;
    TextCache m_text;
    ColorRGB m_back = kWhite, m_pen, m_fill;
    int m_width = 1;
    float m_x = 0, m_y = 0;
};

} // namespace plotwell::test
