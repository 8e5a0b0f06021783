#pragma once

#include "platform/circlefootprints.h"
#include "platform/imagesurface.h"
#include "platform/drawnarea.h"
#include "platform/textcache.h"

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPen>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace plotwell {

// The drawing surface as an off-screen image that keeps everything drawn on
// it. It draws with QPainter at 96 dots per inch (15 twips to a pixel), with
// antialiasing off, so that a frame looks the same on every machine.
//
// Consecutive lines of one pen are handed to QPainter together, the pixels of
// small circles are remembered (CircleFootprints), and what lies wholly
// outside the image is skipped; none of this changes a pixel of the result.
//
// Frames can be composed on it from a picture kept elsewhere: the surface
// knows where it was drawn on since that picture was last put back, so that
// putting it back, and showing the result, touches only those parts.
class QImageSurface : public ImageSurface {
public:
    QImageSurface(float widthTwips = 6795, float heightTwips = 7155);
    ~QImageSurface() override;

    const QImage& image() const override;
    // Called when a finished frame is presented, with the part of the image
    // that changed since the last time, to show it on screen.
    std::function<void(const QRegion& changed)> onRefresh;

    void setBand(const QRect& pixels) override;
    QRect band() const override { return m_band; }
    void restoreFrom(const QImage& picture, bool whole = false) override;
    void scroll(int dx, int dy) override;
    void copyPart(const QImage& picture, const QRect& part) override;
    State state() const override;
    void setState(const State& state) override;

    float width() const override { return m_widthTwips; }
    float height() const override { return m_heightTwips; }
    void resize(float widthTwips, float heightTwips) override;

    ColorRGB backColor() const override { return m_back; }
    void setBackColor(ColorRGB colour) override { m_back = colour; }

    void clear() override;
    // 1 to 255 pixels; other widths are taken as the nearest of these.
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
    void refresh() override;

private:
    struct ScaledPicture {
        qint64 key = 0;
        QRectF source;
        QImage image;
    };

    struct PainterPen {
        ColorRGB colour;
        int width = 0;
        bool set = false;
    };

    QPainter& painter() const;
    void usePen(ColorRGB colour, int width) const;
    void flushLines() const;
    void endPainting() const;
    // True when a box of pixels lies wholly outside the band; otherwise it
    // is taken as drawn on.
    bool outside(float left, float top, float right, float bottom);

    float m_widthTwips;
    float m_heightTwips;
    ColorRGB m_back = kWhite;
    ColorRGB m_pen;
    ColorRGB m_fill;
    int m_penWidth = 1;
    float m_textX = 0;
    float m_textY = 0;
    TextCache m_text;
    CircleFootprints m_circles;
    ScaledPicture m_scaled;
    QRect m_band;
    DrawnArea m_drawn; // since the kept picture was last put back
    DrawnArea m_shown; // since the last refresh

    // Drawing to the image is deferred only as far as the pending lines;
    // image() hands out a finished picture, so these change under const.
    mutable QImage m_image;
    mutable QPainter m_painter;
    mutable PainterPen m_painterPen;
    mutable const QFont* m_painterFont = nullptr; // the cache's font the painter holds
    mutable QPen m_qpen; // square caps; the pattern of every pen
    struct PenSlot {
        std::uint32_t key = 0; // colour and width
        bool made = false;
        QPen pen;
    };
    static constexpr int kPenSlotBits = 10;
    mutable std::array<PenSlot, 1 << kPenSlotBits> m_pens;
    mutable std::vector<QLineF> m_lines; // consecutive lines of one pen, not yet drawn
    mutable ColorRGB m_linesColour;
    mutable int m_linesWidth = 1;
};

} // namespace plotwell
