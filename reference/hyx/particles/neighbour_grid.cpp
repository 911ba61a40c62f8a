// Sorts points into the cells of a hashed grid.
#include "reference/hyx/particles/neighbour_grid.h"

#include <algorithm>
#include <bit>

namespace hyx {

void NeighbourGrid::build(std::vector<Vec3> const& points, Real cellSize) {
    auto const index = [cellSize](Real value) {
        return static_cast<std::int32_t>(std::clamp(std::floor(value / cellSize), -1e9, 1e9));
    };
    std::size_t const buckets = std::bit_ceil(std::max<std::size_t>(points.size() * 2, 16));
    m_mask = static_cast<std::uint32_t>(buckets - 1);
    m_cells.clear();
    for (Vec3 const& point : points)
        m_cells.push_back({index(point.x), index(point.y), index(point.z)});
    m_begin.assign(buckets + 1, 0);
    for (Cell const& cell : m_cells)
        ++m_begin[bucketOf(cell) + 1];
    for (std::size_t b = 0; b < buckets; ++b)
        m_begin[b + 1] += m_begin[b];
    m_sorted.resize(points.size());
    std::vector<std::size_t> next(m_begin.begin(), m_begin.end() - 1);
    for (std::size_t i = 0; i < points.size(); ++i)
        m_sorted[next[bucketOf(m_cells[i])]++] = i;
}

} // namespace hyx
