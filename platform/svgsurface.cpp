#include "platform/svgsurface.h"

#include "platform/qimagesurface.h"
#include "platform/twips.h"

#include <QIODevice>

#include <algorithm>
#include <cmath>
#include <string>

namespace plotwell {
namespace {

constexpr float kPerPixel = float(kTwipsPerPixel);
constexpr int kDotsPerInch = 96;

} // namespace

SvgSurface::SvgSurface(QIODevice& device, QSize pixels, const QString& title)
    : m_widthTwips(twips(pixels.width())), m_heightTwips(twips(pixels.height()))
{
    m_generator.setOutputDevice(&device);
    m_generator.setSize(pixels);
    m_generator.setViewBox(QRectF(QPointF(0, 0), QSizeF(pixels)));
    m_generator.setResolution(kDotsPerInch);
    m_generator.setTitle(title);
    m_painter.begin(&m_generator);
    m_qpen.setCapStyle(Qt::SquareCap);
    m_text.setFont(8.25f, false, &m_generator);
}

SvgSurface::~SvgSurface() { finish(); }

void SvgSurface::finish()
{
    if (!m_painter.isActive())
        return;
    flushPictures();
    m_painter.end();
}

bool SvgSurface::outside(float left, float top, float right, float bottom) const
{
    return right < 0 || bottom < 0 || left > m_widthTwips / kPerPixel || top > m_heightTwips / kPerPixel;
}

void SvgSurface::usePen(ColorRGB colour)
{
    // Each change of the painter's state starts a new group in the drawing:
    // the pen is set only when it changes.
    const QColor qcolour = toQColor(colour);
    if (m_penSet && m_qpen.color() == qcolour && m_qpen.width() == m_penWidth)
        return;
    m_qpen.setColor(qcolour);
    m_qpen.setWidth(m_penWidth);
    m_painter.setPen(m_qpen);
    m_penSet = true;
}

void SvgSurface::flushPictures()
{
    if (!m_pictures)
        return;
    m_painter.drawImage(QPointF(0, 0), m_pictures->image());
    m_pictures.reset();
}

void SvgSurface::clear()
{
    // What was painted before is covered anyway.
    m_pictures.reset();
    if (!m_painter.isActive())
        return;
    m_painter.fillRect(QRectF(0, 0, m_widthTwips / kPerPixel, m_heightTwips / kPerPixel), toQColor(m_back));
}

void SvgSurface::line(float x1, float y1, float x2, float y2)
{
    x1 /= kPerPixel;
    y1 /= kPerPixel;
    x2 /= kPerPixel;
    y2 /= kPerPixel;
    if (!m_painter.isActive() || !(std::isfinite(x1) && std::isfinite(y1) && std::isfinite(x2) && std::isfinite(y2)))
        return;
    const float pad = float(m_penWidth) + 2;
    if (outside(std::min(x1, x2) - pad, std::min(y1, y2) - pad, std::max(x1, x2) + pad, std::max(y1, y2) + pad))
        return;
    flushPictures();
    usePen(m_pen);
    m_painter.drawLine(QLineF(x1, y1, x2, y2));
}

void SvgSurface::circle(float cx, float cy, float radius, ColorRGB outline)
{
    cx /= kPerPixel;
    cy /= kPerPixel;
    const float r = std::fabs(radius) / kPerPixel;
    if (!m_painter.isActive() || !(std::isfinite(cx) && std::isfinite(cy) && std::isfinite(r)))
        return;
    const float reach = r + float(m_penWidth) + 2;
    if (outside(cx - reach, cy - reach, cx + reach, cy + reach))
        return;
    flushPictures();
    usePen(outline);
    if (m_painter.brush().color() != toQColor(m_fill) || m_painter.brush().style() != Qt::SolidPattern)
        m_painter.setBrush(toQColor(m_fill));
    m_painter.drawEllipse(QPointF(cx, cy), double(r), double(r));
}

void SvgSurface::setTextPosition(float x, float y)
{
    m_textX = x;
    m_textY = y;
}

void SvgSurface::setFont(float points, bool bold) { m_text.setFont(points, bold, &m_generator); }

void SvgSurface::print(std::string_view text)
{
    const float x = m_textX / kPerPixel;
    const float y = m_textY / kPerPixel;
    if (!m_painter.isActive() || text.empty() || !(std::isfinite(x) && std::isfinite(y)))
        return;
    const float margin = m_text.lineHeight();
    if (outside(x - margin, y - margin, x + float(text.size()) * m_text.widestChar() + margin, y + 2 * margin))
        return;
    flushPictures();
    usePen(m_pen);
    if (m_painterFont != &m_text.font()) {
        m_painter.setFont(m_text.font());
        m_painterFont = &m_text.font();
    }
    // XML cannot hold control characters, which a label may: they are
    // written as "?".
    std::string visible;
    if (std::any_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x20; })) {
        visible.assign(text);
        std::replace_if(visible.begin(), visible.end(), [](char c) { return uchar(c) < 0x20; }, '?');
        text = visible;
    }
    // The text's top-left corner is at the text position.
    m_painter.drawStaticText(QPointF(x, y), m_text.text(text));
}

void SvgSurface::paintPicture(const QImage& picture, const QRectF& target, const QRectF& source, RasterOp op)
{
    if (!m_pictures) {
        // Pictures land on what the frame cleared to, as on the map surface.
        m_pictures = std::make_unique<QImageSurface>(m_widthTwips, m_heightTwips);
        m_pictures->setBackColor(m_back);
        m_pictures->clear();
    }
    m_pictures->paintPicture(picture, target, source, op);
}

} // namespace plotwell
