// The axis that separates two boxes most, and their points along it.
#include "reference/machinery/bullet/box_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/fresh_contacts.h"

#include <BulletCollision/CollisionShapes/btBoxShape.h>

#include <cmath>
#include <limits>

namespace hyx {

namespace {

/// Of the boxes' size: an axis counts as better only by this, so that it does not change to and fro.
constexpr double sameGap = 2e-3;

struct PlacedBox {
    explicit PlacedBox(btCollisionObjectWrapper const& wrapper)
        : center(wrapper.getWorldTransform().getOrigin()),
          axes(wrapper.getWorldTransform().getBasis().transpose()),
          half(static_cast<btBoxShape const&>(*wrapper.getCollisionShape()).getHalfExtentsWithMargin()) {}

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

/// Over the axes of both boxes and those across two edges. Where one parts the boxes by `reach`, no other counts.
class Search {
public:
    Search(PlacedBox const& first, PlacedBox const& second, double reach)
        : m_first(first),
          m_second(second),
          m_better(sameGap * (first.half.length() + second.half.length())),
          m_reach(reach),
          m_apart(second.center - first.center),
          m_inFirst(first.axes * m_apart),
          m_inSecond(second.axes * m_apart),
          m_turn(first.axes * second.axes.transpose()),
          m_size(m_turn.absolute()) {}

    static constexpr int numAxes = 15;

    /// The number of an axis that parts the boxes, of `parting` first; -1 where none does.
    int find(int parting) {
        if (parting >= 0 && gapAlong(parting) >= m_reach)
            return parting;
        for (int i = 0; i < numAxes; ++i) {
            double const gap = gapAlong(i);
            if (gap >= m_reach)
                return i;
            Separation::Kind const kind = kindOf(i);
            if (gap > m_gap + (m_best >= 0 && kind == kindOf(m_best) ? 0 : m_better)) {
                m_gap = gap;
                m_best = i;
            }
        }
        return -1;
    }

    Separation best() const {
        Separation found{m_gap, kindOf(m_best), {0, 0}, {0, 0, 1}};
        if (found.kind == Separation::EDGES) {
            found.axes[0] = (m_best - 6) / 3;
            found.axes[1] = (m_best - 6) % 3;
            found.normal = m_first.axes[found.axes[0]].cross(m_second.axes[found.axes[1]]).normalized();
        } else {
            found.axes[found.kind] = m_best % 3;
            found.normal = (found.kind == Separation::FIRST_FACE ? m_first : m_second).axes[m_best % 3];
        }
        if (m_apart.dot(found.normal) < 0)
            found.normal = -found.normal;
        return found;
    }

private:
    static Separation::Kind kindOf(int number) {
        return number < 3 ? Separation::FIRST_FACE : number < 6 ? Separation::SECOND_FACE : Separation::EDGES;
    }

    double gapAlong(int number) const {
        if (number < 3)
            return std::abs(m_inFirst[number]) - m_first.half[number] - m_size[number].dot(m_second.half);
        if (number < 6)
            return std::abs(m_inSecond[number - 3]) - m_second.half[number - 3] -
                   m_size.getColumn(number - 3).dot(m_first.half);
        return gapAcross((number - 6) / 3, (number - 6) % 3);
    }

    /// In the frame of the first box, where its axis is a unit vector.
    double gapAcross(int i, int j) const {
        double const square = 1 - m_turn[i][j] * m_turn[i][j];
        if (square < 1e-8)
            return -std::numeric_limits<double>::infinity();
        int const i1 = (i + 1) % 3, i2 = (i + 2) % 3;
        int const j1 = (j + 1) % 3, j2 = (j + 2) % 3;
        double const apart = std::abs(m_inFirst[i2] * m_turn[i1][j] - m_inFirst[i1] * m_turn[i2][j]);
        double const first = m_first.half[i1] * m_size[i2][j] + m_first.half[i2] * m_size[i1][j];
        double const second = m_second.half[j1] * m_size[i][j2] + m_second.half[j2] * m_size[i][j1];
        return (apart - first - second) / std::sqrt(square);
    }

    PlacedBox const& m_first;
    PlacedBox const& m_second;
    double m_better;
    double m_reach;
    btVector3 m_apart;
    btVector3 m_inFirst;
    btVector3 m_inSecond;
    btMatrix3x3 m_turn;
    btMatrix3x3 m_size;
    double m_gap = -std::numeric_limits<double>::infinity();
    int m_best = -1;
};

/// Convex; four corners that are cut four times.
struct Polygon {
    btVector3 corners[12];
    int size = 0;

    void add(btVector3 const& corner) {
        if (size < 12)
            corners[size++] = corner;
    }
};

/// What is left of a polygon below a plane.
Polygon cut(Polygon const& polygon, btVector3 const& normal, double height) {
    Polygon kept;
    for (int i = 0; i < polygon.size; ++i) {
        btVector3 const& from = polygon.corners[i];
        btVector3 const& to = polygon.corners[i + 1 < polygon.size ? i + 1 : 0];
        double const start = normal.dot(from) - height;
        double const end = normal.dot(to) - height;
        if (start <= 0)
            kept.add(from);
        if ((start < 0 && end > 0) || (start > 0 && end < 0))
            kept.add(from + (to - from) * (start / (start - end)));
    }
    return kept;
}

/// The face of a box that looks most against a direction.
Polygon faceAgainst(PlacedBox const& box, btVector3 const& direction) {
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
    return {{middle + along + across, middle - along + across, middle - along - across, middle + along - across}, 4};
}

struct FindOnBox {
    void operator()(btCollisionObjectWrapper const& one, btCollisionObjectWrapper const& other, bool,
                    btManifoldResult& result, double reach) {
        PlacedBox const first(one);
        PlacedBox const second(other);
        Search search(first, second, reach);
        parting = search.find(parting);
        if (parting >= 0)
            return;
        Separation const found = search.best();
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
        Polygon polygon = faceAgainst(other, outward);
        for (int i : {(axis + 1) % 3, (axis + 2) % 3})
            for (double const side : {-1.0, 1.0}) {
                btVector3 const normal = box.axes[i] * side;
                polygon = cut(polygon, normal, normal.dot(box.center) + box.half[i]);
            }
        double const height = outward.dot(box.center) + box.half[axis];
        for (int k = 0; k < polygon.size; ++k) {
            btVector3 const& point = polygon.corners[k];
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

    /// The axis that parted the boxes last; it likely still does.
    int parting = -1;
};

} // namespace

void registerBoxContacts(btCollisionDispatcher& dispatcher) {
    static FreshContacts<FindOnBox>::Creation creation(false);
    dispatcher.registerCollisionCreateFunc(BOX_SHAPE_PROXYTYPE, BOX_SHAPE_PROXYTYPE, &creation);
}

} // namespace hyx
