#pragma once

#include "document/mapdocument.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace plotwell {

// A grid over the world that lists, for each cell, every line that can be hit
// by a click in that cell, so that a click on a large map looks at a few
// dozen lines instead of all of them. A line can only be hit within the
// tolerance of its bounding box, so it is listed in every cell that its box,
// widened by more than the tolerance, touches. Lines whose box covers many
// cells are kept in one list that every query looks at, and lines appended
// since the grid was built in another; records removed from the document, or
// moved, make the grid be built again at the next query.
class LineIndex {
public:
    // Calls visit(index) once for every line that can be hit at the world
    // point (x, y); every other line certainly is not. No line can be hit at
    // a point that is not finite.
    template <typename Visit> void forCandidates(const MapDocument& doc, float x, float y, Visit&& visit)
    {
        if (!std::isfinite(x) || !std::isfinite(y))
            return;
        update(doc);
        const std::size_t count = doc.lineCount();
        if (!m_gridded) {
            for (std::size_t i = 0; i < count; ++i)
                visit(i);
            return;
        }
        const std::size_t cell = cellIndex(cellColumn(x), cellRow(y));
        for (std::uint32_t k = m_cellStart[cell]; k < m_cellStart[cell + 1]; ++k)
            visit(std::size_t(m_entries[k]));
        visitOffGrid(count, visit);
    }

    // Calls visit(index) for every line with an end within r world units of
    // (x, y), and for some others; a line may be visited more than once.
    template <typename Visit> void forCandidatesNear(const MapDocument& doc, float x, float y, float r, Visit&& visit)
    {
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(r))
            return;
        update(doc);
        const std::size_t count = doc.lineCount();
        const int c0 = m_gridded ? cellColumn(double(x) - r) : 0, c1 = m_gridded ? cellColumn(double(x) + r) : 0;
        const int r0 = m_gridded ? cellRow(double(y) - r) : 0, r1 = m_gridded ? cellRow(double(y) + r) : 0;
        // Zoomed far out, the circle covers so many cells that all lines are fewer.
        if (!m_gridded || double(c1 - c0 + 1) * double(r1 - r0 + 1) * kLinesPerCellGuess > double(count)) {
            for (std::size_t i = 0; i < count; ++i)
                visit(i);
            return;
        }
        for (int row = r0; row <= r1; ++row) {
            for (int column = c0; column <= c1; ++column) {
                const std::size_t cell = cellIndex(column, row);
                for (std::uint32_t k = m_cellStart[cell]; k < m_cellStart[cell + 1]; ++k)
                    visit(std::size_t(m_entries[k]));
            }
        }
        visitOffGrid(count, visit);
    }

    // Below this many lines the walk over all of them is as quick.
    static constexpr std::size_t kMinLines = 2048;

private:
    // The lines no cell lists: those wider than a cell, and those added since the grid was built.
    template <typename Visit> void visitOffGrid(std::size_t count, Visit& visit) const
    {
        for (const std::uint32_t i : m_wide)
            visit(std::size_t(i));
        for (std::size_t i = m_indexed; i < count; ++i)
            visit(i);
    }

    // About as many lines as the grid lists in one cell.
    static constexpr double kLinesPerCellGuess = 4;

    void update(const MapDocument& doc);
    void build(const MapDocument& doc);
    int cellColumn(double x) const;
    int cellRow(double y) const;
    std::size_t cellIndex(int column, int row) const
    {
        return std::size_t(row) * std::size_t(m_columns) + std::size_t(column);
    }

    bool m_gridded = false;
    std::size_t m_indexed = 0; // lines [0, m_indexed) are in the grid or the wide list
    std::uint64_t m_removals = 0; // the document's removals when the grid was built
    std::uint64_t m_placements = 0; // and its placements
    double m_minX = 0;
    double m_minY = 0;
    double m_cell = 1;
    int m_columns = 0;
    int m_rows = 0;
    std::vector<std::uint32_t> m_cellStart; // entries of cell c: [m_cellStart[c], m_cellStart[c + 1])
    std::vector<std::uint32_t> m_entries;
    std::vector<std::uint32_t> m_wide;
};

} // namespace plotwell
