#include "tools/lineindex.h"

#include <algorithm>
#include <cmath>

namespace plotwell {
namespace {

// More than the hit tolerance of 2 world units, so that rounding of the
// differences the hit test compares can never reach past it.
constexpr double kMargin = 4;
// A line listed in more cells than this goes to the wide list.
constexpr long long kMaxCellsPerLine = 64;
constexpr int kMaxCellsAcross = 2048;
// Lines per cell the grid aims at, before their own extent is counted.
constexpr double kLinesPerCell = 16;

struct Box {
    double minX, minY, maxX, maxY;
};

Box boxOf(const MapLine& line)
{
    return {std::min(double(line.p1.x), double(line.p2.x)), std::min(double(line.p1.y), double(line.p2.y)),
            std::max(double(line.p1.x), double(line.p2.x)), std::max(double(line.p1.y), double(line.p2.y))};
}

// The box of the lines' centres without the farthest hundredth on each side.
Box usualExtent(const std::vector<MapLine>& lines)
{
    std::vector<double> xs, ys;
    xs.reserve(lines.size());
    ys.reserve(lines.size());
    for (const MapLine& line : lines) {
        xs.push_back((double(line.p1.x) + double(line.p2.x)) / 2);
        ys.push_back((double(line.p1.y) + double(line.p2.y)) / 2);
    }
    const auto at = [](std::vector<double>& v, std::size_t k) {
        std::nth_element(v.begin(), v.begin() + std::ptrdiff_t(k), v.end());
        return v[k];
    };
    const std::size_t low = lines.size() / 100;
    const std::size_t high = lines.size() - 1 - low;
    return {at(xs, low), at(ys, low), at(xs, high), at(ys, high)};
}

} // namespace

void LineIndex::update(const MapDocument& doc)
{
    const std::size_t count = doc.lineCount();
    const bool removed = doc.removals() != m_removals || doc.placements() != m_placements;
    const std::size_t appended = count > m_indexed ? count - m_indexed : 0;
    // Lines drawn since the grid was built are few and are looked at one by
    // one; a whole file loaded since then is worth a new grid.
    if (removed || appended > std::max<std::size_t>(kMinLines, m_indexed / 8))
        build(doc);
}

int LineIndex::cellColumn(double x) const
{
    // Monotonic in x, so a point inside a widened box falls in one of the box's cells.
    const double c = std::floor((x - m_minX) / m_cell);
    return int(std::clamp(c, 0.0, double(m_columns - 1)));
}

int LineIndex::cellRow(double y) const
{
    const double r = std::floor((y - m_minY) / m_cell);
    return int(std::clamp(r, 0.0, double(m_rows - 1)));
}

void LineIndex::build(const MapDocument& doc)
{
    const auto& lines = doc.lines();
    m_removals = doc.removals();
    m_placements = doc.placements();
    m_indexed = lines.size();
    m_cellStart.clear();
    m_entries.clear();
    m_wide.clear();
    m_gridded = lines.size() >= kMinLines && lines.size() < std::size_t(UINT32_MAX);
    if (!m_gridded)
        return;

    // The grid covers where most lines are; the few far from the rest fall
    // into its edge cells instead of stretching every cell.
    const Box world = usualExtent(lines);
    double extent = 0;
    for (const MapLine& line : lines) {
        const Box b = boxOf(line);
        extent +=
            std::min(std::max(b.maxX - b.minX, b.maxY - b.minY), world.maxX - world.minX + world.maxY - world.minY);
    }
    const double width = std::max(world.maxX - world.minX, 1.0);
    const double height = std::max(world.maxY - world.minY, 1.0);
    const double n = double(lines.size());
    // Cells as wide as a typical line, so that it is listed in few of them,
    // and not so small that most of them are empty.
    m_cell = std::max({extent / n + 2 * kMargin, std::sqrt(width * height * kLinesPerCell / n),
                       std::max(width, height) / kMaxCellsAcross});
    m_minX = world.minX;
    m_minY = world.minY;
    m_columns = int(std::min(std::floor(width / m_cell) + 1, double(kMaxCellsAcross)));
    m_rows = int(std::min(std::floor(height / m_cell) + 1, double(kMaxCellsAcross)));

    struct Span {
        int c0, r0, c1, r1;
    };
    std::vector<Span> spans(lines.size());
    m_cellStart.assign(std::size_t(m_columns) * std::size_t(m_rows) + 1, 0);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Box b = boxOf(lines[i]);
        Span s{cellColumn(b.minX - kMargin), cellRow(b.minY - kMargin), cellColumn(b.maxX + kMargin),
               cellRow(b.maxY + kMargin)};
        if ((long long)(s.c1 - s.c0 + 1) * (s.r1 - s.r0 + 1) > kMaxCellsPerLine) {
            m_wide.push_back(std::uint32_t(i));
            s.c0 = 1, s.c1 = 0; // listed in no cell
        }
        spans[i] = s;
        for (int r = s.r0; r <= s.r1; ++r)
            for (int c = s.c0; c <= s.c1; ++c)
                ++m_cellStart[cellIndex(c, r) + 1];
    }
    for (std::size_t c = 1; c < m_cellStart.size(); ++c)
        m_cellStart[c] += m_cellStart[c - 1];
    m_entries.resize(m_cellStart.back());
    std::vector<std::uint32_t> next(m_cellStart.begin(), m_cellStart.end() - 1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Span& s = spans[i];
        for (int r = s.r0; r <= s.r1; ++r)
            for (int c = s.c0; c <= s.c1; ++c)
                m_entries[next[cellIndex(c, r)]++] = std::uint32_t(i);
    }
}

} // namespace plotwell
