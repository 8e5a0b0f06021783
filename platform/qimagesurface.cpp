#include "platform/qimagesurface.h"

#include "platform/twips.h"

#include <QPen>

#include <algorithm>
#include <cmath>

namespace plotwell {
namespace {

constexpr float kPerPixel = float(kTwipsPerPixel);
// Dots per metre of 96 dots per inch, so that points become pixels as on a 96-dpi screen.
constexpr int kDotsPerMeter = 3780;

int pixels(float twips) { return std::max(1, px(twips)); }

QImage makeImage(float widthTwips, float heightTwips)
{
    QImage image(pixels(widthTwips), pixels(heightTwips), QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    image.setDotsPerMeterX(kDotsPerMeter);
    image.setDotsPerMeterY(kDotsPerMeter);
    return image;
}

} // namespace

QImageSurface::QImageSurface(float widthTwips, float heightTwips)
    : m_widthTwips(widthTwips), m_heightTwips(heightTwips), m_image(makeImage(widthTwips, heightTwips))
{
    m_image.fill(toQColor(m_back));
    m_lines.reserve(4096);
    m_circles.reset(m_image.size());
    m_qpen.setCapStyle(Qt::SquareCap);
    // A fresh picture box prints at 8.25 points until told otherwise.
    m_text.setFont(8.25f, false, &m_image);
}

QImageSurface::~QImageSurface() { endPainting(); }

const QImage& QImageSurface::image() const
{
    flushLines();
    return m_image;
}

void QImageSurface::resize(float widthTwips, float heightTwips)
{
    endPainting();
    m_widthTwips = widthTwips;
    m_heightTwips = heightTwips;
    // Like a picture box that keeps its drawing: the old image stays at the
    // top-left, new room shows the background.
    QImage resized = makeImage(widthTwips, heightTwips);
    resized.fill(toQColor(m_back));
    {
        QPainter p(&resized);
        p.drawImage(0, 0, m_image);
    }
    m_image = std::move(resized);
    m_circles.reset(m_image.size());
}

QPainter& QImageSurface::painter() const
{
    if (!m_painter.isActive()) {
        m_painter.begin(&m_image);
        m_painter.setRenderHint(QPainter::Antialiasing, false);
        m_painter.setRenderHint(QPainter::TextAntialiasing, false);
        m_painterPen = {};
        m_painterFont = nullptr;
    }
    return m_painter;
}

void QImageSurface::usePen(ColorRGB colour, int width) const
{
    if (m_painterPen.set && m_painterPen.colour == colour && m_painterPen.width == width)
        return;
    // One pen object changed in place: building a new QPen for every line of a
    // many-coloured map costs more than drawing the line.
    m_qpen.setColor(toQColor(colour));
    m_qpen.setWidth(width);
    painter().setPen(m_qpen);
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

bool QImageSurface::outside(float left, float top, float right, float bottom) const
{
    return right < 0 || bottom < 0 || left > float(m_image.width()) || top > float(m_image.height());
}

void QImageSurface::clear()
{
    // Lines not yet handed over would be painted over at once. The painter
    // ends first, so that filling never detaches the image from it.
    m_lines.clear();
    endPainting();
    m_image.fill(toQColor(m_back));
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
    if (outside(std::min(x1, x2) - pad, std::min(y1, y2) - pad, std::max(x1, x2) + pad, std::max(y1, y2) + pad))
        return;
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
    m_qpen.setWidth(m_penWidth);
    const auto& spans = m_circles.footprint(QPointF(cx, cy), r, m_qpen);
    // Pixels are written straight into the image; should someone hold a copy
    // of it, the painter lets go first so that both write the same pixels.
    if (m_painter.isActive() && !m_image.isDetached())
        endPainting();
    const QRgb outlinePixel = toQColor(outline).rgb();
    const QRgb insidePixel = toQColor(m_fill).rgb();
    for (const CircleFootprints::Span& span : spans) {
        auto* row = reinterpret_cast<QRgb*>(m_image.scanLine(span.y));
        std::fill(row + span.x0, row + span.x1, span.outline ? outlinePixel : insidePixel);
    }
}

void QImageSurface::setTextPosition(float x, float y)
{
    m_textX = x;
    m_textY = y;
}

void QImageSurface::setFont(float points, bool bold) { m_text.setFont(points, bold, &m_image); }

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

    flushLines();
    QPainter& p = painter();
    p.setCompositionMode(op == RasterOp::Or ? QPainter::RasterOp_SourceOrDestination
                                            : QPainter::CompositionMode_Source);
    const QSize size = to.toAlignedRect().size();
    if (size == from.size().toSize()) {
        p.drawImage(to.topLeft(), picture, from);
    } else if (double(size.width()) * size.height() > 4.0 * (double(m_image.width()) * m_image.height() + 65536)) {
        // Stretched far past the surface (kept in proportion on a long thin
        // surface, say), the whole scaled picture would take gigabytes: the
        // painter scales just the part that lands on the surface.
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.drawImage(to, picture, from);
        p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    } else {
        // Scaling a large picture is slow: it is scaled once for as long as
        // the picture, its part and the room for it stay the same.
        ScaledPicture& cached = m_scaled;
        if (cached.key != picture.cacheKey() || cached.source != from || cached.image.size() != size) {
            cached.key = picture.cacheKey();
            cached.source = from;
            cached.image = picture.copy(from.toAlignedRect()).scaled(size, Qt::IgnoreAspectRatio,
                                                                     Qt::SmoothTransformation);
        }
        p.drawImage(to.topLeft(), cached.image);
    }
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QImageSurface::refresh()
{
    endPainting();
    if (onRefresh)
        onRefresh();
}

} // namespace plotwell
