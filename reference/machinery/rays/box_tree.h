// A tree over boxes, for rays that look for the nearest of many things.
#pragma once

#include <LinearMath/btVector3.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace hyx {

/// A half-line, with the reciprocals that boxes are tested with.
struct Ray {
    Ray(btVector3 const& origin, btVector3 const& direction);

    btVector3 origin;
    btVector3 direction; ///< of length one
    btVector3 inverse;
};

struct RayBox {
    btVector3 lower{0, 0, 0};
    btVector3 upper{0, 0, 0};

    /// Where the ray comes in, 0 from inside; infinite when that is not before `reach`.
    double entry(Ray const& ray, double reach) const {
        double in = 0;
        double out = reach;
        for (int axis = 0; axis < 3; ++axis) {
            double const a = (lower[axis] - ray.origin[axis]) * ray.inverse[axis];
            double const b = (upper[axis] - ray.origin[axis]) * ray.inverse[axis];
            in = std::max(in, std::min(a, b));
            out = std::min(out, std::max(a, b));
        }
        return in <= out ? in : std::numeric_limits<double>::infinity();
    }

    void include(RayBox const& other) {
        lower.setMin(other.lower);
        upper.setMax(other.upper);
    }
};

/// Halves its boxes again and again along their longest side. Many threads may walk it at a time.
class BoxTree {
public:
    /// Takes as many boxes as things; `walk` names them by their place here.
    void build(std::vector<RayBox> const& boxes);

    /// Calls `visit` with the index of every box that the ray enters before `reach`, nearer parts first. `visit` may
    /// shorten `reach`.
    template <class Visit>
    void walk(Ray const& ray, double const& reach, Visit const& visit) const;

private:
    static constexpr std::uint32_t leafSize = 4;

    /// An inner node has no things; its second child follows its first.
    struct Node {
        RayBox box;
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };

    void split(std::uint32_t node, std::vector<RayBox> const& boxes);

    std::vector<Node> m_nodes;
    std::vector<std::uint32_t> m_order;
};

template <class Visit>
void BoxTree::walk(Ray const& ray, double const& reach, Visit const& visit) const {
    struct Waiting {
        std::uint32_t node;
        double entry;
    };

    Waiting waiting[128]; // halving 2^32 things goes 32 deep
    int count = 0;
    if (!m_nodes.empty())
        waiting[count++] = {0, m_nodes[0].box.entry(ray, reach)};
    while (count > 0) {
        Waiting const next = waiting[--count];
        if (!(next.entry <= reach) || next.entry == std::numeric_limits<double>::infinity())
            continue;
        Node const& node = m_nodes[next.node];
        for (std::uint32_t i = 0; i < node.count; ++i)
            visit(m_order[node.first + i]);
        if (node.count > 0)
            continue;
        Waiting near{node.first, m_nodes[node.first].box.entry(ray, reach)};
        Waiting far{node.first + 1, m_nodes[node.first + 1].box.entry(ray, reach)};
        if (far.entry < near.entry)
            std::swap(near, far);
        waiting[count++] = far;
        waiting[count++] = near;
    }
}

} // namespace hyx
