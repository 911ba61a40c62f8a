// Sorts spheres into columns of cells.
#include "reference/hyx/particles/neighbour_grid.h"

#include "reference/machinery/dynamics/lanes.h"

#include <algorithm>
#include <cmath>

namespace hyx {

namespace {

/// Bits of a cell's number that say how far it is along an axis. What lies beyond is in the outermost cells.
constexpr int bits = 21;
constexpr double farthestCell = (1 << bits) - 3;

/// Cells above each other have numbers that follow each other.
constexpr std::uint64_t cellAt(std::uint64_t x, std::uint64_t y, std::uint64_t z) {
    return (x << bits | y) << bits | z;
}

} // namespace

void NeighbourGrid::findPairs(std::vector<btVector3> const& spheres, Real reach, std::vector<Pair>& pairs) {
    pairs.clear();
    Real largest = 0;
    for (btVector3 const& sphere : spheres)
        largest = std::max(largest, sphere.w());
    if (largest > 0) {
        sort(spheres, (2 + reach) * largest);
        // The other half of the columns around a sphere has it among its own.
        for (auto const& [dx, dy] : {std::pair(0, 0), {0, 1}, {1, -1}, {1, 0}, {1, 1}})
            findInColumns(dx, dy, reach, pairs);
    }
}

void NeighbourGrid::sort(std::vector<btVector3> const& spheres, Real cellSize) {
    btVector3 lowest = spheres.front();
    for (btVector3 const& sphere : spheres)
        lowest.setMin(sphere);
    m_entries.clear();
    for (btVector3 const& sphere : spheres) {
        auto const cell = [&](int axis) {
            // One more, so that every cell has a neighbour on each side.
            return 1 + static_cast<std::uint64_t>(std::min((sphere[axis] - lowest[axis]) / cellSize, farthestCell));
        };
        m_entries.push_back({cellAt(cell(0), cell(1), cell(2)), static_cast<std::uint32_t>(m_entries.size())});
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](Entry const& a, Entry const& b) { return a.cell != b.cell ? a.cell < b.cell : a.place < b.place; });
    m_sorted.clear();
    for (Entry const& entry : m_entries)
        m_sorted.push_back(spheres[entry.place]);
}

/// Pairs of which the second sphere is `dx` and `dy` columns farther.
HYX_WIDE_LANES void NeighbourGrid::findInColumns(int dx, int dy, Real reach, std::vector<Pair>& pairs) const {
    bool const own = dx == 0 && dy == 0;
    std::uint64_t const way = cellAt(dx, 0, 0) + cellAt(0, 1, 0) * static_cast<std::uint64_t>(dy);
    std::size_t const count = m_entries.size();
    std::size_t number = pairs.size();
    // Both go through the cells in one direction.
    std::size_t lowest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t const above = m_entries[i].cell + way + 1;
        while (lowest < count && m_entries[lowest].cell + 2 < above)
            ++lowest;
        std::size_t end = own ? i + 1 : lowest;
        std::size_t const start = end;
        while (end < count && m_entries[end].cell <= above)
            ++end;
        if (pairs.size() < number + (end - start))
            pairs.resize(2 * number + (end - start));
        btVector3 const& first = m_sorted[i];
        for (std::size_t k = start; k < end; ++k) {
            btVector3 const& second = m_sorted[k];
            Lanes const apart = lanes(first) - lanes(second);
            double const near = first.w() + second.w() + reach * std::min(first.w(), second.w());
            // Writes in any case: most are not near, and which cannot be foreseen.
            pairs[number] = std::minmax(m_entries[i].place, m_entries[k].place);
            number += dot(apart, apart) <= near * near;
        }
    }
    pairs.resize(number);
}

} // namespace hyx
