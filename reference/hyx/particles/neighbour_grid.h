// Finding spheres that are near each other quickly.
#pragma once

#include "platform/hyx/values/types.h"

#include <LinearMath/btVector3.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace hyx {

/// Sorts spheres by the cell of a grid that their centres lie in, so that the cells of a column follow each other. The
/// memory follows the number of spheres and not the space that they fill.
class NeighbourGrid {
public:
    /// The two places of spheres in their list, the lesser one first.
    using Pair = std::pair<std::uint32_t, std::uint32_t>;

    /// Fills in the pairs of spheres (centre, and radius as fourth part) whose surfaces are no farther apart than
    /// `reach` radii of the smaller one, each once and in an order that follows from the spheres alone. Pairs beside
    /// each other in it are seldom of the same spheres.
    void findPairs(std::vector<btVector3> const& spheres, Real reach, std::vector<Pair>& pairs);

private:
    struct Entry {
        std::uint64_t cell;
        std::uint32_t place;
    };

    void sort(std::vector<btVector3> const& spheres, Real cellSize);
    void findInColumns(int dx, int dy, Real reach, std::vector<Pair>& pairs) const;

    std::vector<Entry> m_entries;
    std::vector<btVector3> m_sorted;
};

} // namespace hyx
