// Finding the points near a point quickly.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace hyx {

/// Finds pairs of points that are near each other: points are sorted by the hash of the cell that they lie in.
/// The memory follows the number of points and not the space that they fill.
class NeighbourGrid {
public:
    /// Sorts the points into cells of `cellSize` metres.
    void build(std::vector<Vec3> const& points, Real cellSize);

    /// Calls `visit(i, j)` once for each pair that lies in the same or in touching cells, i < j, in a fixed order.
    template <class Visit>
    void forEachPair(Visit&& visit) const {
        for (std::size_t i = 0; i < m_cells.size(); ++i)
            for (int dx = -1; dx <= 1; ++dx)
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dz = -1; dz <= 1; ++dz) {
                        Cell const cell{m_cells[i].x + dx, m_cells[i].y + dy, m_cells[i].z + dz};
                        std::size_t const bucket = bucketOf(cell);
                        for (std::size_t k = m_begin[bucket]; k < m_begin[bucket + 1]; ++k)
                            // Different cells can share a bucket, so the cell itself decides.
                            if (m_sorted[k] > i && m_cells[m_sorted[k]] == cell)
                                visit(i, m_sorted[k]);
                    }
    }

private:
    struct Cell {
        std::int32_t x, y, z;
        bool operator==(Cell const&) const = default;
    };

    std::size_t bucketOf(Cell const& cell) const {
        std::uint32_t const hash = static_cast<std::uint32_t>(cell.x) * 73856093u ^
                                   static_cast<std::uint32_t>(cell.y) * 19349663u ^
                                   static_cast<std::uint32_t>(cell.z) * 83492791u;
        return hash & m_mask;
    }

    std::vector<Cell> m_cells;
    std::vector<std::size_t> m_begin;
    std::vector<std::size_t> m_sorted;
    std::uint32_t m_mask = 0;
};

} // namespace hyx
