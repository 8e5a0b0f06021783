#pragma once

#include "platform/circlefootprints.h"
#include "platform/drawnarea.h"
#include "platform/imagesurface.h"
#include "platform/keptpicture.h"
#include "platform/scrollingimage.h"
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
// it. It draws with QPainter at 96 dots per inch (15 twips to a logical
// pixel), with antialiasing off, so that a frame looks the same on every
// machine. The image has the device pixels of the screen it is shown on;
// QPainter places everything in logical pixels and draws at device ones.
//
// Consecutive lines of one pen are handed to QPainter together, the pixels of
// small circles are remembered (CircleFootprints), and what lies wholly
// outside the image is skipped; none of this changes a pixel of the result.
//
// Frames are composed on it from a picture kept in its own image: the
// surface saves what drawing covers, so that putting the picture back, and
// showing the result, touches only those parts; and it scrolls without
// moving its pixels (ScrollingImage).
class QImageSurface : public ImageSurface {
public:
    QImageSurface(float widthTwips = 6795, float heightTwips = 7155, double ratio = 1);
    ~QImageSurface() override;

    const QImage& image() const override;
    // Called when a finished frame is presented, with the part of the image
    // that changed since the last time, to show it on screen.
    std::function<void(const QRegion& changed)> onRefresh;

    void setBand(const QRect& pixels) override;
    QRect band() const override { return m_band; }
    void keepPicture() override;
    bool restorePicture() override;
    void scroll(int dx, int dy) override;
    void copyPart(const QImage& picture, const QRect& part) override;
    State state() const override;
    void setState(const State& state) override;
    double pixelRatio() const override { return m_ratio; }
    void setPixelRatio(double ratio) override;

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
        bool smooth = true;
        QImage image;
    };

    struct PainterPen {
        ColorRGB colour;
        int width = 0;
        bool set = false;
    };

    QPainter& painter() const;
    // The image, to be written to directly.
    QImage& pixels();
    // QPainter's width, in logical pixels, of a pen width pixels wide: a
    // whole number of device pixels, so that a line is as wide all along.
    double painterPenWidth(int width) const;
    void usePen(ColorRGB colour, int width) const;
    void flushLines() const;
    void endPainting() const;
    // Makes the image anew at the current size and ratio, the old drawing
    // scaled into its top-left corner.
    void remakeImage();
    // Forgets what was known of an image just made: its band, kept picture and circles.
    void startAnew();
    // True when a box of logical pixels lies wholly outside the band;
    // otherwise it is taken as drawn on, when mark.
    bool outside(float left, float top, float right, float bottom, bool mark = true);
    // Whether what is drawn must be noted: to save the kept picture under
    // it, or to show it at the next refresh.
    bool tracking();
    // Notes a box of device pixels as drawn on.
    void markDrawn(float left, float top, float right, float bottom);
    // Notes as drawn on what a line in logical pixels can reach with a pen
    // reaching pad past it.
    void markLine(float x1, float y1, float x2, float y2, float pad);
    // A picture scaled to a size in device pixels, kept while it is painted again.
    const QImage& scaled(const QImage& picture, const QRectF& source, QSize size, bool smooth);

    float m_widthTwips;
    float m_heightTwips;
    ColorRGB m_back = kWhite;
    ColorRGB m_pen;
    ColorRGB m_fill;
    int m_penWidth = 1;
    double m_ratio = 1;
    float m_textX = 0;
    float m_textY = 0;
    TextCache m_text;
    CircleFootprints m_circles;
    // The underlay and the tracing paper over it are both scaled at most ratios.
    std::array<ScaledPicture, 2> m_scaled;
    std::size_t m_scaledLast = 0;
    QRect m_band;
    KeptPicture m_kept;
    DrawnArea m_shown; // since the last refresh

    // Drawing to the image is deferred only as far as the pending lines;
    // image() hands out a finished picture, so these change under const.
    mutable ScrollingImage m_pixels;
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
