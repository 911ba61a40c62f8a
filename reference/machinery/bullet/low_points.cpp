// The corners and rims of solids.
#include "reference/machinery/bullet/low_points.h"

#include "reference/machinery/bullet/contact_points.h"

#include <BulletCollision/CollisionShapes/btBoxShape.h>
#include <BulletCollision/CollisionShapes/btCapsuleShape.h>
#include <BulletCollision/CollisionShapes/btConeShape.h>
#include <BulletCollision/CollisionShapes/btConvexHullShape.h>
#include <BulletCollision/CollisionShapes/btCylinderShape.h>
#include <BulletCollision/CollisionShapes/btSphereShape.h>

#include <algorithm>

namespace hyx {

namespace {

/// Four points of a circle about Y: the lowest and the highest, and those between.
void addRim(std::vector<btVector3>& points, double radius, double height, btVector3 const& down) {
    btVector3 lowest(down.x(), 0, down.z());
    lowest = lowest.length2() > 1e-12 ? lowest.normalized() * radius : btVector3(radius, 0, 0);
    btVector3 const middle(0, height, 0);
    btVector3 const aside(lowest.z(), 0, -lowest.x());
    points.insert(points.end(), {middle + lowest, middle - lowest, middle + aside, middle - aside});
}

std::vector<btVector3> cornersOf(btCollisionShape const& shape, btVector3 const& down) {
    std::vector<btVector3> points;
    switch (shape.getShapeType()) {
    case SPHERE_SHAPE_PROXYTYPE:
        points.push_back(down * static_cast<btSphereShape const&>(shape).getRadius());
        break;
    case CAPSULE_SHAPE_PROXYTYPE: {
        auto const& capsule = static_cast<btCapsuleShape const&>(shape);
        for (double const end : {-capsule.getHalfHeight(), capsule.getHalfHeight()})
            points.push_back(btVector3(0, end, 0) + down * capsule.getRadius());
        break;
    }
    case BOX_SHAPE_PROXYTYPE: {
        btVector3 const half = static_cast<btBoxShape const&>(shape).getHalfExtentsWithMargin();
        for (int i = 0; i < 8; ++i)
            points.emplace_back(i & 1 ? half.x() : -half.x(), i & 2 ? half.y() : -half.y(),
                                i & 4 ? half.z() : -half.z());
        break;
    }
    case CYLINDER_SHAPE_PROXYTYPE: {
        btVector3 const half = static_cast<btCylinderShape const&>(shape).getHalfExtentsWithMargin();
        addRim(points, half.x(), half.y(), down);
        addRim(points, half.x(), -half.y(), down);
        break;
    }
    case CONE_SHAPE_PROXYTYPE: {
        auto const& cone = static_cast<btConeShape const&>(shape);
        addRim(points, cone.getRadius(), -cone.getHeight() / 2, down);
        points.emplace_back(0, cone.getHeight() / 2, 0);
        break;
    }
    default: {
        auto const& hull = static_cast<btConvexHullShape const&>(shape);
        for (int i = 0; i < hull.getNumPoints(); ++i)
            points.push_back(hull.getScaledPoint(i));
        break;
    }
    }
    return points;
}

/// Manifolds take points for one that are no farther apart than this.
bool isAboveOneOf(std::vector<btVector3> const& lower, btVector3 const& point, btVector3 const& down, double apart) {
    return std::any_of(lower.begin(), lower.end(), [&](btVector3 const& other) {
        btVector3 const way = point - other;
        return (way - down * down.dot(way)).length2() < apart * apart;
    });
}

} // namespace

std::vector<btVector3> lowPoints(btCollisionShape const& shape, btVector3 const& down, std::size_t most) {
    std::vector<btVector3> corners = cornersOf(shape, down);
    if (shape.getShapeType() == CONVEX_HULL_SHAPE_PROXYTYPE)
        return corners;
    std::stable_sort(corners.begin(), corners.end(),
                     [&down](btVector3 const& a, btVector3 const& b) { return down.dot(a) > down.dot(b); });
    std::vector<btVector3> lowest;
    double const apart = usualReach(shape.getAngularMotionDisc());
    for (btVector3 const& corner : corners)
        if (lowest.size() < most && !isAboveOneOf(lowest, corner, down, apart))
            lowest.push_back(corner);
    return lowest;
}

} // namespace hyx
