#pragma once

#include <QRect>
#include <QRegion>
#include <QSize>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace plotwell {

// The part of an image drawn on since some moment, as a grid of small tiles:
// adding the box of every line of an overlay costs next to nothing, and the
// part comes back as a few rectangles to copy or to show.
class DrawnArea {
public:
    static constexpr int kTile = 16;

    // Forgets everything; the area covers nothing of an image of this size.
    void reset(QSize imageSize);
    // Adds a box of pixels; what lies outside the image is left out.
    void add(const QRect& pixels);
    void addAll() { m_all = true; }
    // Adds a box of pixels and calls fresh(rect) for each run of tiles along
    // a row that the area did not hold before.
    template <typename Fresh> void addNew(const QRect& pixels, Fresh&& fresh)
    {
        const QRect r = pixels & QRect(QPoint(0, 0), m_size);
        if (m_all || r.isEmpty())
            return;
        const int c0 = r.left() / kTile, c1 = r.right() / kTile;
        const int r0 = r.top() / kTile, r1 = r.bottom() / kTile;
        for (int row = r0; row <= r1; ++row) {
            std::uint8_t* tiles = &m_tiles[std::size_t(row) * std::size_t(m_columns)];
            for (int c = c0; c <= c1;) {
                if (tiles[c]) {
                    ++c;
                    continue;
                }
                int end = c + 1;
                while (end <= c1 && !tiles[end])
                    ++end;
                std::fill(tiles + c, tiles + end, std::uint8_t(1));
                fresh(tileRect(row, c, end));
                c = end;
            }
        }
        m_firstRow = std::min(m_firstRow, r0);
        m_lastRow = std::max(m_lastRow, r1);
    }
    void addArea(const DrawnArea& other);
    void clear();

    bool isAll() const { return m_all; }
    bool isEmpty() const { return !m_all && m_firstRow > m_lastRow; }

    // Calls visit(rect) for each rectangle of the area, together covering it:
    // runs of tiles along each row of tiles, or the whole image.
    template <typename Visit> void forEachRect(Visit&& visit) const
    {
        if (m_all) {
            visit(QRect(QPoint(0, 0), m_size));
            return;
        }
        for (int row = m_firstRow; row <= m_lastRow; ++row) {
            const std::uint8_t* tiles = &m_tiles[std::size_t(row) * std::size_t(m_columns)];
            for (int c = 0; c < m_columns;) {
                if (!tiles[c]) {
                    ++c;
                    continue;
                }
                int end = c + 1;
                while (end < m_columns && tiles[end])
                    ++end;
                visit(tileRect(row, c, end));
                c = end;
            }
        }
    }
    QRegion region() const;

private:
    QRect tileRect(int row, int firstColumn, int endColumn) const;

    QSize m_size;
    int m_columns = 0;
    int m_rows = 0;
    bool m_all = true;
    int m_firstRow = 0; // rows of tiles touched since the last clear
    int m_lastRow = -1;
    std::vector<std::uint8_t> m_tiles;
};

} // namespace plotwell
