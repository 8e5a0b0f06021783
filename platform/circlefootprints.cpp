#include "platform/circlefootprints.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace plotwell {
namespace {

// Scratch colours: untouched, inside and outline pixels.
constexpr QRgb kNone = 0xff000000;
constexpr QRgb kInside = 0xff00ff00;
constexpr QRgb kOutline = 0xff0000ff;

std::uint32_t bitsOf(float f)
{
    std::uint32_t u;
    std::memcpy(&u, &f, sizeof u);
    return u;
}

} // namespace

std::size_t CircleFootprints::KeyHash::operator()(const Key& k) const
{
    std::uint64_t h = bitsOf(k.x);
    h = h * 0x9E3779B97F4A7C15ull ^ bitsOf(k.y);
    h = h * 0x9E3779B97F4A7C15ull ^ bitsOf(k.r);
    h = h * 0x9E3779B97F4A7C15ull ^ bitsOf(float(k.penWidth));
    return std::size_t(h ^ (h >> 29));
}

void CircleFootprints::reset(QSize imageSize, double ratio)
{
    m_size = imageSize;
    m_ratio = ratio;
    m_scratch = QImage();
    m_footprints.clear();
}

const std::vector<CircleFootprints::Span>& CircleFootprints::footprint(QPointF centre, float radius, const QPen& pen)
{
    const Key key{float(centre.x()), float(centre.y()), radius, pen.widthF()};
    auto it = m_footprints.find(key);
    if (it != m_footprints.end())
        return it->second;
    if (m_footprints.size() >= kMaxFootprints)
        m_footprints.clear();
    return m_footprints.emplace(key, measure(centre, radius, pen)).first->second;
}

std::vector<CircleFootprints::Span> CircleFootprints::measure(QPointF centre, float radius, const QPen& pen)
{
    if (m_scratch.isNull()) {
        m_scratch = QImage(m_size, QImage::Format_RGB32);
        m_scratch.setDevicePixelRatio(m_ratio);
        m_scratch.fill(kNone);
    }
    QPen marked = pen;
    marked.setColor(QColor::fromRgb(kOutline));
    {
        QPainter p(&m_scratch);
        p.setRenderHint(QPainter::Antialiasing, false);
        p.setPen(marked);
        p.setBrush(QColor::fromRgb(kInside));
        p.drawEllipse(centre, double(radius), double(radius));
    }

    // Nothing of the circle lies further out than its radius and its pen.
    const double reach = (double(radius) + pen.widthF() + 2) * m_ratio;
    const QPointF c = centre * m_ratio;
    const int x0 = std::max(0, int(std::floor(c.x() - reach)));
    const int x1 = std::min(m_size.width(), int(std::ceil(c.x() + reach)) + 1);
    const int y0 = std::max(0, int(std::floor(c.y() - reach)));
    const int y1 = std::min(m_size.height(), int(std::ceil(c.y() + reach)) + 1);
    std::vector<Span> spans;
    if (x0 >= x1)
        return spans;
    for (int y = y0; y < y1; ++y) {
        auto* row = reinterpret_cast<QRgb*>(m_scratch.scanLine(y));
        for (int x = x0; x < x1;) {
            const QRgb c = row[x];
            int end = x + 1;
            while (end < x1 && row[end] == c)
                ++end;
            if (c != kNone)
                spans.push_back({y, x, end, c == kOutline});
            x = end;
        }
        std::fill(row + x0, row + x1, kNone);
    }
    return spans;
}

} // namespace plotwell
