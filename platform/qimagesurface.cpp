#include "platform/qimagesurface.h"

#include "platform/twips.h"

#include <QPen>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace plotwell {
namespace {

constexpr float kPerPixel = float(kTwipsPerPixel);
// Ratios a screen can have, and more; anything else is taken as the nearest of them.
double validRatio(double ratio)
{
    if (!(ratio >= 0.25))
        return ratio > 0 ? 0.25 : 1.0; // NaN and nonsense become plain pixels
    return std::min(ratio, 8.0);
}

// Device pixels for a length in twips: whole logical pixels, and every
// device pixel that any part of them covers; no more than an image can have.
int devicePixels(float twips, double ratio)
{
    const double logical = std::max(1.0, std::round(double(twips) / kTwipsPerPixel));
    return int(std::clamp(std::ceil(logical * ratio - 1e-6), 1.0, double(1 << 20)));
}

// Rows or parts of rows of one image copied into another of the same format.
void copyRect(QImage& to, const QImage& from, const QRect& rect)
{
    const QRect r = rect & to.rect() & from.rect();
    if (r.isEmpty())
        return;
    const auto bytes = std::size_t(r.width()) * 4;
    for (int y = r.top(); y <= r.bottom(); ++y)
        std::memcpy(to.scanLine(y) + r.left() * 4, from.constScanLine(y) + r.left() * 4, bytes);
}

} // namespace

QImageSurface::QImageSurface(float widthTwips, float heightTwips, double ratio)
    : m_widthTwips(widthTwips), m_heightTwips(heightTwips), m_ratio(validRatio(ratio))
{
    m_pixels.make(QSize(devicePixels(widthTwips, m_ratio), devicePixels(heightTwips, m_ratio)), m_ratio);
    m_pixels.image().fill(toQColor(m_back));
    m_lines.reserve(4096);
    m_qpen.setCapStyle(Qt::SquareCap);
    startAnew();
    // A fresh picture box prints at 8.25 points until told otherwise.
    m_text.setFont(8.25f, false, &m_pixels.image());
}

QImageSurface::~QImageSurface()
{
    endPainting();
}

const QImage& QImageSurface::image() const
{
    flushLines();
    return m_pixels.image();
}

QImage& QImageSurface::pixels()
{
    QImage& image = m_pixels.image();
    // Should someone hold a copy of the image, the painter lets go first,
    // so that it and direct writes reach the same pixels.
    if (!image.isDetached()) {
        endPainting();
        m_pixels.prepareToDraw();
    }
    return m_pixels.image();
}

void QImageSurface::resize(float widthTwips, float heightTwips)
{
    m_widthTwips = widthTwips;
    m_heightTwips = heightTwips;
    remakeImage();
}

void QImageSurface::setPixelRatio(double ratio)
{
    ratio = validRatio(ratio);
    if (ratio == m_ratio)
        return;
    m_ratio = ratio;
    // Pens are as wide as whole device pixels make them at a ratio.
    for (PenSlot& slot : m_pens)
        slot.made = false;
    remakeImage();
}

void QImageSurface::remakeImage()
{
    endPainting();
    // Like a picture box that keeps its drawing: the old image stays at the
    // top-left, new room shows the background.
    const QImage old = m_pixels.image();
    m_pixels.make(QSize(devicePixels(m_widthTwips, m_ratio), devicePixels(m_heightTwips, m_ratio)), m_ratio);
    QImage& image = m_pixels.image();
    image.fill(toQColor(m_back));
    {
        QPainter p(&image);
        p.drawImage(0, 0, old);
    }
    startAnew();
}

void QImageSurface::startAnew()
{
    const QSize size = m_pixels.image().size();
    m_circles.reset(size, m_ratio);
    m_band = QRect(QPoint(0, 0), size);
    m_kept.reset(size);
    m_shown.reset(size);
    m_shown.addAll();
}

void QImageSurface::setBand(const QRect& pixels)
{
    m_band = pixels & m_pixels.image().rect();
}

void QImageSurface::keepPicture()
{
    flushLines();
    m_kept.keep();
}

bool QImageSurface::restorePicture()
{
    // Lines not yet handed over lie where the picture goes back.
    m_lines.clear();
    endPainting();
    return m_kept.restore(pixels(), m_shown);
}

void QImageSurface::scroll(int dx, int dy)
{
    endPainting();
    m_kept.lose();
    m_shown.addAll();
    m_pixels.scroll(dx, dy);
}

void QImageSurface::copyPart(const QImage& picture, const QRect& part)
{
    endPainting();
    if (m_kept.kept())
        m_kept.saveUnder(m_pixels.image(), part);
    else
        m_kept.changed();
    copyRect(pixels(), picture, part);
    m_shown.add(part);
}

QImageSurface::State QImageSurface::state() const
{
    return {m_pen, m_fill, m_penWidth, m_textX, m_textY, m_text.points(), m_text.bold()};
}

void QImageSurface::setState(const State& state)
{
    m_pen = state.pen;
    m_fill = state.fill;
    setPenWidth(state.penWidth);
    m_textX = state.textX;
    m_textY = state.textY;
    setFont(state.fontPoints, state.bold);
}

QPainter& QImageSurface::painter() const
{
    if (!m_painter.isActive()) {
        m_pixels.prepareToDraw();
        m_painter.begin(&m_pixels.image());
        m_painter.setRenderHint(QPainter::Antialiasing, false);
        m_painter.setRenderHint(QPainter::TextAntialiasing, false);
        m_painterPen = {};
        m_painterFont = nullptr;
    }
    return m_painter;
}

double QImageSurface::painterPenWidth(int width) const
{
    return double(std::max(1L, std::lround(double(width) * m_ratio))) / m_ratio;
}

void QImageSurface::usePen(ColorRGB colour, int width) const
{
    if (m_painterPen.set && m_painterPen.colour == colour && m_painterPen.width == width)
        return;
    // A pen of each colour and width is made once and kept in a slot of its
    // own: building a new one for every line of a many-coloured map, or
    // changing one the painter shares, costs more than drawing the line.
    const std::uint32_t key = colour.value() | std::uint32_t(width) << 24;
    PenSlot& slot = m_pens[(key * 2654435761u) >> (32 - kPenSlotBits)];
    if (!slot.made || slot.key != key) {
        slot.pen = m_qpen;
        slot.pen.setColor(toQColor(colour));
        slot.pen.setWidthF(painterPenWidth(width));
        slot.key = key;
        slot.made = true;
    }
    painter().setPen(slot.pen);
    m_painterPen = {colour, width, true};
}

void QImageSurface::flushLines() const
{
    if (m_lines.empty())
        return;
    QPainter& p = painter();
    usePen(m_linesColour, m_linesWidth);
    p.drawLines(m_lines.data(), int(m_lines.size()));
    m_lines.clear();
}

void QImageSurface::endPainting() const
{
    flushLines();
    if (m_painter.isActive())
        m_painter.end();
}

bool QImageSurface::outside(float left, float top, float right, float bottom, bool mark)
{
    const auto r = float(m_ratio);
    left *= r, top *= r, right *= r, bottom *= r;
    if (right < float(m_band.left()) || bottom < float(m_band.top()) || left > float(m_band.right() + 1)
        || top > float(m_band.bottom() + 1))
        return true;
    if (mark)
        markDrawn(left, top, right, bottom);
    return false;
}

bool QImageSurface::tracking()
{
    if (m_kept.kept())
        return true;
    m_kept.changed();
    return !m_shown.isAll();
}

void QImageSurface::markDrawn(float left, float top, float right, float bottom)
{
    if (!tracking())
        return;
    // Finite, and brought within reach of the image before it becomes whole pixels.
    const QImage& image = m_pixels.image();
    const float w = float(image.width()) + 1, h = float(image.height()) + 1;
    const QRect box(QPoint(int(std::floor(std::clamp(left, -1.0f, w))), int(std::floor(std::clamp(top, -1.0f, h)))),
                    QPoint(int(std::ceil(std::clamp(right, -1.0f, w))), int(std::ceil(std::clamp(bottom, -1.0f, h)))));
    m_kept.saveUnder(image, box);
    m_shown.add(box);
}

void QImageSurface::markLine(float x1, float y1, float x2, float y2, float pad)
{
    if (!tracking())
        return;
    const auto r = float(m_ratio);
    x1 *= r, y1 *= r, x2 *= r, y2 *= r, pad *= r;
    const float top = std::max(std::min(y1, y2) - pad, -1.0f);
    const float bottom = std::min(std::max(y1, y2) + pad, float(m_pixels.image().height()) + 1);
    constexpr auto tile = float(DrawnArea::kTile);
    // Row of tiles by row of tiles, the part of the line whose pen can reach
    // into the row: a slanted line takes a strip of tiles, not its whole box.
    for (float row = std::floor(top / tile) * tile; row < bottom; row += tile) {
        float from = 0, to = 1;
        if (y1 != y2) {
            from = std::clamp((row - pad - y1) / (y2 - y1), 0.0f, 1.0f);
            to = std::clamp((row + tile + pad - y1) / (y2 - y1), 0.0f, 1.0f);
        }
        const float xa = x1 + (x2 - x1) * from, xb = x1 + (x2 - x1) * to;
        markDrawn(std::min(xa, xb) - pad, std::max(row, top), std::max(xa, xb) + pad, std::min(row + tile, bottom));
    }
}

void QImageSurface::clear()
{
    // Lines not yet handed over would be painted over at once. The painter
    // ends first, so that filling never detaches the image from it.
    m_lines.clear();
    endPainting();
    // The picture is gone, not saved: the next frame paints it anew.
    m_kept.lose();
    m_shown.addAll();
    QImage& image = pixels();
    if (m_band == image.rect()) {
        image.fill(toQColor(m_back));
        return;
    }
    const QRgb back = toQColor(m_back).rgb();
    for (int y = m_band.top(); y <= m_band.bottom(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill(row + m_band.left(), row + m_band.right() + 1, back);
    }
}

void QImageSurface::line(float x1, float y1, float x2, float y2)
{
    x1 /= kPerPixel;
    y1 /= kPerPixel;
    x2 /= kPerPixel;
    y2 /= kPerPixel;
    if (!(std::isfinite(x1) && std::isfinite(y1) && std::isfinite(x2) && std::isfinite(y2)))
        return;
    // The square caps and the pen's width reach at most a pen width past the ends.
    const float pad = float(std::max(m_penWidth, 1)) + 2;
    if (outside(std::min(x1, x2) - pad, std::min(y1, y2) - pad, std::max(x1, x2) + pad, std::max(y1, y2) + pad, false))
        return;
    markLine(x1, y1, x2, y2, pad);
    if (!m_lines.empty() && (m_linesColour != m_pen || m_linesWidth != m_penWidth))
        flushLines();
    m_linesColour = m_pen;
    m_linesWidth = m_penWidth;
    m_lines.emplace_back(x1, y1, x2, y2);
}

void QImageSurface::circle(float cx, float cy, float radius, ColorRGB outline)
{
    cx /= kPerPixel;
    cy /= kPerPixel;
    const float r = std::fabs(radius) / kPerPixel;
    if (!(std::isfinite(cx) && std::isfinite(cy) && std::isfinite(r)))
        return;
    const float reach = r + float(std::max(m_penWidth, 1)) + 2;
    if (outside(cx - reach, cy - reach, cx + reach, cy + reach))
        return;
    flushLines();
    if (r > CircleFootprints::kMaxRadius) {
        QPainter& p = painter();
        usePen(outline, m_penWidth);
        p.setBrush(toQColor(m_fill));
        p.drawEllipse(QPointF(cx, cy), double(r), double(r));
        return;
    }
    // The footprint is that of the pen lines are drawn with, at this width.
    m_qpen.setWidthF(painterPenWidth(m_penWidth));
    const auto& spans = m_circles.footprint(QPointF(cx, cy), r, m_qpen);
    // Pixels are written straight into the image.
    QImage& image = pixels();
    const QRgb outlinePixel = toQColor(outline).rgb();
    const QRgb insidePixel = toQColor(m_fill).rgb();
    for (const CircleFootprints::Span& span : spans) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(span.y));
        std::fill(row + span.x0, row + span.x1, span.outline ? outlinePixel : insidePixel);
    }
}

void QImageSurface::setTextPosition(float x, float y)
{
    m_textX = x;
    m_textY = y;
}

void QImageSurface::setFont(float points, bool bold)
{
    m_text.setFont(points, bold, &m_pixels.image());
}

void QImageSurface::print(std::string_view text)
{
    const float x = m_textX / kPerPixel;
    const float y = m_textY / kPerPixel;
    if (text.empty() || !(std::isfinite(x) && std::isfinite(y)))
        return;
    // A bound that needs no layout: no glyph is wider than the widest one,
    // and overhangs stay within a line height of the text's box.
    const float margin = m_text.lineHeight();
    const float right = x + float(text.size()) * m_text.widestChar() + margin;
    if (outside(x - margin, y - margin, right, y + 2 * margin))
        return;
    flushLines();
    QPainter& p = painter();
    usePen(m_pen, m_penWidth);
    if (m_painterFont != &m_text.font()) {
        p.setFont(m_text.font());
        m_painterFont = &m_text.font();
    }
    // The text's top-left corner is at the text position.
    p.drawStaticText(QPointF(x, y), m_text.text(text));
}

void QImageSurface::paintPicture(const QImage& picture, const QRectF& target, const QRectF& source, RasterOp op)
{
    const auto toPixels = [](const QRectF& r) {
        return QRectF(r.x() / kPerPixel, r.y() / kPerPixel, r.width() / kPerPixel, r.height() / kPerPixel);
    };
    QRectF from = toPixels(source);
    QRectF to = toPixels(target);
    if (picture.isNull() || from.isEmpty() || to.isEmpty())
        return;
    // A source reaching past the picture paints only the part that exists,
    // at the same scale.
    const QRectF inside = from.intersected(QRectF(picture.rect()));
    if (inside.isEmpty())
        return;
    const double sx = to.width() / from.width();
    const double sy = to.height() / from.height();
    to = QRectF(to.x() + (inside.x() - from.x()) * sx, to.y() + (inside.y() - from.y()) * sy, inside.width() * sx,
                inside.height() * sy);
    from = inside;

    const QRectF reach = to.adjusted(-1, -1, 1, 1);
    if (outside(float(reach.left()), float(reach.top()), float(reach.right()), float(reach.bottom())))
        return;
    flushLines();
    QPainter& p = painter();
    p.setCompositionMode(op == RasterOp::Or ? QPainter::RasterOp_SourceOrDestination
                                            : QPainter::CompositionMode_Source);
    // The picture is scaled to the device pixels it covers: smoothly when it
    // is stretched, and by repeating its pixels when it is shown at its own
    // size, so that the tracing paper's cells stay cells on any screen.
    const QRectF device(to.topLeft() * m_ratio, to.size() * m_ratio);
    const QSize size = device.toAlignedRect().size();
    if (size == from.size().toSize()) {
        p.drawImage(to.topLeft(), picture, from);
    } else if (double(size.width()) * size.height()
               > 4.0 * (double(m_pixels.image().width()) * m_pixels.image().height() + 65536)) {
        // Stretched far past the surface (kept in proportion on a long thin
        // surface, say), the whole scaled picture would take gigabytes: the
        // painter scales just the part that lands on the surface.
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.drawImage(to, picture, from);
        p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    } else {
        const bool ownSize = to.size().toSize() == from.size().toSize();
        p.drawImage(to.topLeft(), scaled(picture, from, size, !ownSize));
    }
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

const QImage& QImageSurface::scaled(const QImage& picture, const QRectF& source, QSize size, bool smooth)
{
    // Scaling a large picture is slow: it is scaled once for as long as the
    // picture, its part and the room for it stay the same.
    for (std::size_t i = 0; i < m_scaled.size(); ++i) {
        const ScaledPicture& s = m_scaled[i];
        if (s.key == picture.cacheKey() && s.source == source && s.smooth == smooth && s.image.size() == size
            && s.image.devicePixelRatio() == m_ratio) {
            m_scaledLast = i;
            return s.image;
        }
    }
    m_scaledLast = (m_scaledLast + 1) % m_scaled.size();
    ScaledPicture& s = m_scaled[m_scaledLast];
    s.key = picture.cacheKey();
    s.source = source;
    s.smooth = smooth;
    s.image = picture.copy(source.toAlignedRect())
                  .scaled(size, Qt::IgnoreAspectRatio, smooth ? Qt::SmoothTransformation : Qt::FastTransformation);
    s.image.setDevicePixelRatio(m_ratio);
    return s.image;
}

void QImageSurface::refresh()
{
    endPainting();
    if (onRefresh)
        onRefresh(m_shown.region());
    m_shown.clear();
}

std::unique_ptr<ImageSurface> makeImageSurface(float widthTwips, float heightTwips, double ratio)
{
    return std::make_unique<QImageSurface>(widthTwips, heightTwips, ratio);
}

} // namespace plotwell
