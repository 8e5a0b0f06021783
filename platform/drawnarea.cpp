#include "platform/drawnarea.h"

#include <algorithm>

namespace plotwell {

void DrawnArea::reset(QSize imageSize)
{
    m_size = imageSize;
    m_columns = (imageSize.width() + kTile - 1) / kTile;
    m_rows = (imageSize.height() + kTile - 1) / kTile;
    m_tiles.assign(std::size_t(m_columns) * std::size_t(m_rows), 0);
    m_all = false;
    m_firstRow = m_rows;
    m_lastRow = -1;
}

void DrawnArea::add(const QRect& pixels)
{
    if (m_all)
        return;
    const QRect r = pixels & QRect(QPoint(0, 0), m_size);
    if (r.isEmpty())
        return;
    const int c0 = r.left() / kTile, c1 = r.right() / kTile;
    const int r0 = r.top() / kTile, r1 = r.bottom() / kTile;
    for (int row = r0; row <= r1; ++row)
        std::fill_n(&m_tiles[std::size_t(row) * std::size_t(m_columns) + std::size_t(c0)], c1 - c0 + 1, 1);
    m_firstRow = std::min(m_firstRow, r0);
    m_lastRow = std::max(m_lastRow, r1);
}

void DrawnArea::addArea(const DrawnArea& other)
{
    if (other.m_all || other.m_size != m_size) {
        m_all = true;
        return;
    }
    other.forEachRect([this](const QRect& r) { add(r); });
}

void DrawnArea::clear()
{
    if (m_lastRow >= m_firstRow) {
        const auto from = m_tiles.begin() + std::ptrdiff_t(m_firstRow) * m_columns;
        std::fill(from, from + std::ptrdiff_t(m_lastRow - m_firstRow + 1) * m_columns, 0);
    }
    m_all = false;
    m_firstRow = m_rows;
    m_lastRow = -1;
}

QRect DrawnArea::tileRect(int row, int firstColumn, int endColumn) const
{
    const QRect r(firstColumn * kTile, row * kTile, (endColumn - firstColumn) * kTile, kTile);
    return r & QRect(QPoint(0, 0), m_size);
}

QRegion DrawnArea::region() const
{
    // The runs come in rows from the top and from the left, none overlapping:
    // the banded order a region is built from at once.
    std::vector<QRect> rects;
    forEachRect([&](const QRect& r) { rects.push_back(r); });
    QRegion region;
    region.setRects(rects.data(), int(rects.size()));
    return region;
}

} // namespace plotwell
