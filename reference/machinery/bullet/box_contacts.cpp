// The axis that separates two boxes most, and their points along it.
#include "reference/machinery/bullet/box_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/fresh_contacts.h"

#include <BulletCollision/CollisionShapes/btBoxShape.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace hyx {

namespace {

/// Of the boxes' size: an axis counts as better only by this, so that it does not change to and fro.
constexpr double sameGap = 2e-3;

struct PlacedBox {
    explicit PlacedBox(btCollisionObjectWrapper const& wrapper)
        : center(wrapper.getWorldTransform().getOrigin()),
          axes(wrapper.getWorldTransform().getBasis().transpose()),
          half(static_cast<btBoxShape const&>(*wrapper.getCollisionShape()).getHalfExtentsWithMargin()) {}

    /// How far the box reaches from its centre.
    double reach(btVector3 const& direction) const {
        btVector3 const along = (axes * direction).absolute();
        return along.dot(half);
    }

    /// The middle of the edge along `axis` that lies furthest in a direction.
    btVector3 edge(int axis, btVector3 const& direction) const {
        btVector3 point = center;
        for (int i = 0; i < 3; ++i)
            if (i != axis)
                point += axes[i] * (axes[i].dot(direction) > 0 ? half[i] : -half[i]);
        return point;
    }

    btVector3 center;
    /// By rows.
    btMatrix3x3 axes;
    btVector3 half;
};

/// The normal leads from the first box to the second.
struct Separation {
    enum Kind { FIRST_FACE, SECOND_FACE, EDGES };

    double gap = -std::numeric_limits<double>::infinity();
    Kind kind = FIRST_FACE;
    int axes[2] = {0, 0};
    btVector3 normal{0, 0, 1};
};

class Search {
public:
    Search(PlacedBox const& first, PlacedBox const& second)
        : m_first(first), m_second(second), m_better(sameGap * (first.half.length() + second.half.length())) {}

    Separation const& find() {
        for (int i = 0; i < 3; ++i)
            look(Separation::FIRST_FACE, m_first.axes[i], i, 0);
        for (int i = 0; i < 3; ++i)
            look(Separation::SECOND_FACE, m_second.axes[i], 0, i);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                btVector3 const axis = m_first.axes[i].cross(m_second.axes[j]);
                if (axis.length2() > 1e-8)
                    look(Separation::EDGES, axis.normalized(), i, j);
            }
        return m_best;
    }

private:
    void look(Separation::Kind kind, btVector3 const& axis, int first, int second) {
        btVector3 const apart = m_second.center - m_first.center;
        btVector3 const normal = apart.dot(axis) < 0 ? -axis : axis;
        double const gap = normal.dot(apart) - m_first.reach(normal) - m_second.reach(normal);
        if (gap > m_best.gap + (kind == m_best.kind ? 0 : m_better))
            m_best = {gap, kind, {first, second}, normal};
    }

    PlacedBox const& m_first;
    PlacedBox const& m_second;
    double m_better;
    Separation m_best;
};

/// What is left of a polygon below a plane.
std::vector<btVector3> cut(std::vector<btVector3> const& polygon, btVector3 const& normal, double height) {
    std::vector<btVector3> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        btVector3 const& from = polygon[i];
        btVector3 const& to = polygon[(i + 1) % polygon.size()];
        double const start = normal.dot(from) - height;
        double const end = normal.dot(to) - height;
        if (start <= 0)
            kept.push_back(from);
        if ((start < 0 && end > 0) || (start > 0 && end < 0))
            kept.push_back(from + (to - from) * (start / (start - end)));
    }
    return kept;
}

/// The face of a box that looks most against a direction.
std::vector<btVector3> faceAgainst(PlacedBox const& box, btVector3 const& direction) {
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (std::abs(box.axes[i].dot(direction)) > std::abs(box.axes[axis].dot(direction)))
            axis = i;
    int const u = (axis + 1) % 3;
    int const v = (axis + 2) % 3;
    btVector3 const middle =
        box.center + box.axes[axis] * (box.axes[axis].dot(direction) > 0 ? -box.half[axis] : box.half[axis]);
    btVector3 const along = box.axes[u] * box.half[u];
    btVector3 const across = box.axes[v] * box.half[v];
    return {middle + along + across, middle - along + across, middle - along - across, middle + along - across};
}

struct FindOnBox {
    void operator()(btCollisionObjectWrapper const& one, btCollisionObjectWrapper const& other, bool,
                    btManifoldResult& result, double reach) const {
        PlacedBox const first(one);
        PlacedBox const second(other);
        Separation const found = Search(first, second).find();
        if (found.gap >= reach)
            return;
        if (found.kind == Separation::EDGES)
            addCrossing(first, second, found, result);
        else if (found.kind == Separation::FIRST_FACE)
            addFace(first, found.axes[0], found.normal, second, false, reach, result);
        else
            addFace(second, found.axes[1], -found.normal, first, true, reach, result);
    }

    /// Bullet's normals lead from the second object to the first, and its points lie on the second.
    static void addFace(PlacedBox const& box, int axis, btVector3 const& outward, PlacedBox const& other, bool turned,
                        double reach, btManifoldResult& result) {
        std::vector<btVector3> polygon = faceAgainst(other, outward);
        for (int i : {(axis + 1) % 3, (axis + 2) % 3})
            for (double const side : {-1.0, 1.0}) {
                btVector3 const normal = box.axes[i] * side;
                polygon = cut(polygon, normal, normal.dot(box.center) + box.half[i]);
            }
        double const height = outward.dot(box.center) + box.half[axis];
        for (btVector3 const& point : polygon) {
            double const distance = outward.dot(point) - height;
            if (distance < reach)
                addPoint(result, turned ? outward : -outward, turned ? point - outward * distance : point, distance);
        }
    }

    static void addCrossing(PlacedBox const& first, PlacedBox const& second, Separation const& found,
                            btManifoldResult& result) {
        btVector3 const u = first.axes[found.axes[0]];
        btVector3 const v = second.axes[found.axes[1]];
        btVector3 const from = first.edge(found.axes[0], found.normal);
        btVector3 const to = second.edge(found.axes[1], -found.normal);
        double const cosine = u.dot(v);
        btVector3 const apart = to - from;
        // Where the line along the second edge comes nearest to the first.
        double const along = (cosine * apart.dot(u) - apart.dot(v)) / (1 - cosine * cosine);
        addPoint(result, -found.normal, to + v * along, found.gap);
    }
};

} // namespace

void registerBoxContacts(btCollisionDispatcher& dispatcher) {
    static FreshContacts<FindOnBox>::Creation creation(false);
    dispatcher.registerCollisionCreateFunc(BOX_SHAPE_PROXYTYPE, BOX_SHAPE_PROXYTYPE, &creation);
}

} // namespace hyx
