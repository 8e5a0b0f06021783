#include "platform/svgsurface.h"

#include "platform/qimagesurface.h"
#include "platform/twips.h"

#include <QBuffer>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QIODevice>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace plotwell {
namespace {

constexpr float kPerPixel = float(kTwipsPerPixel);
constexpr int kDotsPerMetre = 3780; // 96 dots per inch
constexpr double kPixelsPerPoint = 96.0 / 72.0;

// Pixels to a hundredth: finer than any screen or printer shows, and short.
QString number(double value)
{
    const double rounded = std::round(value * 100) / 100;
    return QString::number(rounded == 0 ? 0.0 : rounded, 'g', 10);
}

QString colourText(ColorRGB colour)
{
    return toQColor(colour).name();
}

} // namespace

SvgSurface::SvgSurface(QIODevice& device, QSize pixels, const QString& title)
    : m_widthTwips(twips(pixels.width())), m_heightTwips(twips(pixels.height())), m_xml(&device),
      m_metrics(1, 1, QImage::Format_RGB32)
{
    m_metrics.setDotsPerMeterX(kDotsPerMetre);
    m_metrics.setDotsPerMeterY(kDotsPerMetre);
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(1);
    m_xml.writeStartDocument();
    m_xml.writeStartElement(QStringLiteral("svg"));
    m_xml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    m_xml.writeNamespace(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("xlink"));
    m_xml.writeNamespace(QStringLiteral("http://www.inkscape.org/namespaces/inkscape"), QStringLiteral("inkscape"));
    m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    m_xml.writeAttribute(QStringLiteral("width"), QString::number(pixels.width()));
    m_xml.writeAttribute(QStringLiteral("height"), QString::number(pixels.height()));
    m_xml.writeAttribute(QStringLiteral("viewBox"),
                         QStringLiteral("0 0 %1 %2").arg(pixels.width()).arg(pixels.height()));
    m_xml.writeTextElement(QStringLiteral("title"), title);
    setFont(8.25f, false);
}

SvgSurface::~SvgSurface()
{
    finish();
}

bool SvgSurface::finish()
{
    if (m_open) {
        flushPictures();
        endGroup();
        m_xml.writeEndDocument();
        m_open = false;
    }
    return !m_xml.hasError();
}

void SvgSurface::endGroup()
{
    if (m_inGroup)
        m_xml.writeEndElement();
    m_inGroup = false;
}

void SvgSurface::beginLayer(const QString& name)
{
    if (!m_open)
        return;
    flushPictures();
    endGroup();
    m_xml.writeStartElement(QStringLiteral("g"));
    m_xml.writeAttribute(QStringLiteral("id"), QStringLiteral("layer%1").arg(++m_groups));
    m_xml.writeAttribute(QStringLiteral("http://www.inkscape.org/namespaces/inkscape"), QStringLiteral("groupmode"),
                         QStringLiteral("layer"));
    m_xml.writeAttribute(QStringLiteral("http://www.inkscape.org/namespaces/inkscape"), QStringLiteral("label"), name);
    m_inGroup = true;
}

bool SvgSurface::outside(float left, float top, float right, float bottom) const
{
    return right < 0 || bottom < 0 || left > m_widthTwips / kPerPixel || top > m_heightTwips / kPerPixel;
}

void SvgSurface::flushPictures()
{
    if (!m_pictures)
        return;
    const QSize size = m_pictures->image().size();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    m_pictures->image().save(&buffer, "PNG");
    m_pictures.reset();
    // The underlay is a layer of its own, which a tracer can lock or hide.
    const bool wasInGroup = m_inGroup;
    if (!wasInGroup)
        beginLayer(QStringLiteral("Underlay"));
    m_xml.writeEmptyElement(QStringLiteral("image"));
    m_xml.writeAttribute(QStringLiteral("x"), QStringLiteral("0"));
    m_xml.writeAttribute(QStringLiteral("y"), QStringLiteral("0"));
    m_xml.writeAttribute(QStringLiteral("width"), QString::number(size.width()));
    m_xml.writeAttribute(QStringLiteral("height"), QString::number(size.height()));
    m_xml.writeAttribute(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("href"),
                         QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64()));
    if (!wasInGroup)
        endGroup();
}

void SvgSurface::clear()
{
    // What was painted before is covered anyway.
    m_pictures.reset();
    if (!m_open)
        return;
    m_xml.writeEmptyElement(QStringLiteral("rect"));
    m_xml.writeAttribute(QStringLiteral("width"), number(m_widthTwips / kPerPixel));
    m_xml.writeAttribute(QStringLiteral("height"), number(m_heightTwips / kPerPixel));
    m_xml.writeAttribute(QStringLiteral("fill"), colourText(m_back));
}

void SvgSurface::line(float x1, float y1, float x2, float y2)
{
    x1 /= kPerPixel;
    y1 /= kPerPixel;
    x2 /= kPerPixel;
    y2 /= kPerPixel;
    if (!m_open || !(std::isfinite(x1) && std::isfinite(y1) && std::isfinite(x2) && std::isfinite(y2)))
        return;
    const float pad = float(m_penWidth) + 2;
    if (outside(std::min(x1, x2) - pad, std::min(y1, y2) - pad, std::max(x1, x2) + pad, std::max(y1, y2) + pad))
        return;
    flushPictures();
    m_xml.writeEmptyElement(QStringLiteral("line"));
    m_xml.writeAttribute(QStringLiteral("x1"), number(x1));
    m_xml.writeAttribute(QStringLiteral("y1"), number(y1));
    m_xml.writeAttribute(QStringLiteral("x2"), number(x2));
    m_xml.writeAttribute(QStringLiteral("y2"), number(y2));
    m_xml.writeAttribute(QStringLiteral("stroke"), colourText(m_pen));
    m_xml.writeAttribute(QStringLiteral("stroke-width"), QString::number(m_penWidth));
    // As the map surface's pen ends a line: square, half the width past each end.
    m_xml.writeAttribute(QStringLiteral("stroke-linecap"), QStringLiteral("square"));
}

void SvgSurface::circle(float cx, float cy, float radius, ColorRGB outline)
{
    cx /= kPerPixel;
    cy /= kPerPixel;
    const float r = std::fabs(radius) / kPerPixel;
    if (!m_open || !(std::isfinite(cx) && std::isfinite(cy) && std::isfinite(r)))
        return;
    const float reach = r + float(m_penWidth) + 2;
    if (outside(cx - reach, cy - reach, cx + reach, cy + reach))
        return;
    flushPictures();
    m_xml.writeEmptyElement(QStringLiteral("circle"));
    m_xml.writeAttribute(QStringLiteral("cx"), number(cx));
    m_xml.writeAttribute(QStringLiteral("cy"), number(cy));
    m_xml.writeAttribute(QStringLiteral("r"), number(r));
    m_xml.writeAttribute(QStringLiteral("fill"), colourText(m_fill));
    m_xml.writeAttribute(QStringLiteral("stroke"), colourText(outline));
    m_xml.writeAttribute(QStringLiteral("stroke-width"), QString::number(m_penWidth));
}

void SvgSurface::setTextPosition(float x, float y)
{
    m_textX = x;
    m_textY = y;
}

void SvgSurface::setFont(float points, bool bold)
{
    const std::pair<float, bool> before{m_text.points(), m_text.bold()};
    m_text.setFont(points, bold, &m_metrics);
    if (!m_fontFamily.isEmpty() && before == std::pair<float, bool>{m_text.points(), m_text.bold()})
        return;
    m_ascent = float(QFontMetricsF(m_text.font(), &m_metrics).ascent());
    // The face the font came to here, then any sans-serif face where the
    // drawing is shown.
    const QString family = QFontInfo(m_text.font()).family();
    m_fontFamily = family.isEmpty() ? QStringLiteral("sans-serif") : family + QStringLiteral(", sans-serif");
}

void SvgSurface::print(std::string_view text)
{
    const float x = m_textX / kPerPixel;
    const float y = m_textY / kPerPixel;
    if (!m_open || text.empty() || !(std::isfinite(x) && std::isfinite(y)))
        return;
    const float margin = m_text.lineHeight();
    if (outside(x - margin, y - margin, x + float(text.size()) * m_text.widestChar() + margin, y + 2 * margin))
        return;
    flushPictures();
    // XML cannot hold control characters, which a label may: they are
    // written as "?".
    std::string visible;
    if (std::any_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x20; })) {
        visible.assign(text);
        std::replace_if(
            visible.begin(), visible.end(), [](char c) { return uchar(c) < 0x20; }, '?');
        text = visible;
    }
    m_xml.writeStartElement(QStringLiteral("text"));
    // The text's top-left corner is at the text position; SVG places the baseline.
    m_xml.writeAttribute(QStringLiteral("x"), number(x));
    m_xml.writeAttribute(QStringLiteral("y"), number(y + m_ascent));
    m_xml.writeAttribute(QStringLiteral("fill"), colourText(m_pen));
    m_xml.writeAttribute(QStringLiteral("font-family"), m_fontFamily);
    m_xml.writeAttribute(QStringLiteral("font-size"), number(double(m_text.points()) * kPixelsPerPoint));
    if (m_text.bold())
        m_xml.writeAttribute(QStringLiteral("font-weight"), QStringLiteral("bold"));
    m_xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    m_xml.writeCharacters(m_text.text(text).text());
    m_xml.writeEndElement();
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
