// Builds the tree over boxes.
#include "reference/machinery/rays/box_tree.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace hyx {

namespace {

/// For a direction of 0 large instead of infinite: a ray that runs in the plane of a side is not lost to 0 x infinity.
double reciprocal(double value) {
    return std::copysign(1 / std::max(std::abs(value), 1e-300), value);
}

} // namespace

Ray::Ray(btVector3 const& origin, btVector3 const& direction)
    : origin(origin),
      direction(direction),
      inverse(reciprocal(direction.x()), reciprocal(direction.y()), reciprocal(direction.z())) {}

void BoxTree::build(std::vector<RayBox> const& boxes) {
    m_order.resize(boxes.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    m_nodes.clear();
    if (boxes.empty())
        return;
    m_nodes.reserve(boxes.size());
    m_nodes.push_back({RayBox(), 0, static_cast<std::uint32_t>(boxes.size())});
    for (std::uint32_t node = 0; node < m_nodes.size(); ++node) // grows meanwhile
        split(node, boxes);
}

void BoxTree::split(std::uint32_t node, std::vector<RayBox> const& boxes) {
    auto const [first, count] = std::pair(m_nodes[node].first, m_nodes[node].count);
    auto const begin = m_order.begin() + first;
    RayBox whole = boxes[*begin];
    btVector3 lowest = whole.lower + whole.upper;
    btVector3 highest = lowest;
    std::for_each(begin, begin + count, [&](std::uint32_t thing) {
        whole.include(boxes[thing]);
        lowest.setMin(boxes[thing].lower + boxes[thing].upper);
        highest.setMax(boxes[thing].lower + boxes[thing].upper);
    });
    m_nodes[node].box = whole;
    int const axis = (highest - lowest).maxAxis();
    if (count <= leafSize || highest[axis] == lowest[axis])
        return;
    std::uint32_t const half = count / 2;
    std::nth_element(begin, begin + half, begin + count, [&](std::uint32_t a, std::uint32_t b) {
        return boxes[a].lower[axis] + boxes[a].upper[axis] < boxes[b].lower[axis] + boxes[b].upper[axis];
    });
    m_nodes[node].first = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes[node].count = 0;
    m_nodes.push_back({RayBox(), first, half});
    m_nodes.push_back({RayBox(), first + half, count - half});
}

} // namespace hyx
