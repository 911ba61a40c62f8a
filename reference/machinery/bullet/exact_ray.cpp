// Solves rays against balls and boxes in closed form.
#include "reference/machinery/bullet/exact_ray.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/bullet/bullet_values.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hyxCollide {

namespace {

std::optional<RayEntry> enterSphere(double radius, btVector3 const& from, btVector3 const& way) {
    double const outside = from.length2() - radius * radius;
    double const approach = -from.dot(way);
    double const square = approach * approach - way.length2() * outside;
    if (outside < 0 || approach <= 0 || square < 0)
        return std::nullopt;
    double const fraction = (approach - std::sqrt(square)) / way.length2();
    if (fraction > 1)
        return std::nullopt;
    return RayEntry{fraction, (from + way * fraction) / radius};
}

/// The latest entry into the three slabs counts when it comes before the earliest exit.
std::optional<RayEntry> enterBox(hyx::Vec3 const& half, btVector3 const& from, btVector3 const& way) {
    double entry = -1;
    double exit = 1;
    int entryAxis = 0;
    for (int axis = 0; axis < 3; ++axis) {
        if (way[axis] == 0) {
            if (std::abs(from[axis]) > half[axis])
                return std::nullopt;
            continue;
        }
        double const side = std::copysign(half[axis], way[axis]);
        double const in = (-side - from[axis]) / way[axis];
        double const out = (side - from[axis]) / way[axis];
        if (in > entry) {
            entry = in;
            entryAxis = axis;
        }
        exit = std::min(exit, out);
    }
    if (entry < 0 || entry > exit)
        return std::nullopt;
    btVector3 normal(0, 0, 0);
    normal[entryAxis] = -std::copysign(1.0, way[entryAxis]);
    return RayEntry{entry, normal};
}

/// The earlier of two entries.
std::optional<RayEntry> nearer(std::optional<RayEntry> const& first, std::optional<RayEntry> const& second) {
    if (!first || !second)
        return first ? first : second;
    return first->fraction <= second->fraction ? first : second;
}

/// The smaller root of a x2 + 2 b x + c, at which a ray enters a quadric that it is outside of (c > 0).
std::optional<double> entryRoot(double a, double b, double c) {
    double const square = b * b - a * c;
    if (c < 0 || b >= 0 || square < 0)
        return std::nullopt;
    // Without the difference of two near numbers.
    double const fraction = c / (std::sqrt(square) - b);
    return fraction <= 1 ? std::optional(fraction) : std::nullopt;
}

/// The side of a cylinder without ends, about Y.
std::optional<RayEntry> enterTube(double radius, double halfHeight, btVector3 const& from, btVector3 const& way) {
    auto const fraction = entryRoot(way.x() * way.x() + way.z() * way.z(), from.x() * way.x() + from.z() * way.z(),
                                    from.x() * from.x() + from.z() * from.z() - radius * radius);
    if (!fraction)
        return std::nullopt;
    btVector3 const point = from + way * *fraction;
    if (std::abs(point.y()) > halfHeight)
        return std::nullopt;
    return RayEntry{*fraction, btVector3(point.x(), 0, point.z()).normalized()};
}

/// A disc at a height, seen from the side that `facing` (1 or -1) looks to along Y.
std::optional<RayEntry> enterDisc(double radius, double height, double facing, btVector3 const& from,
                                  btVector3 const& way) {
    double const above = (from.y() - height) * facing;
    double const approach = -way.y() * facing;
    if (above < 0 || above > approach || approach == 0)
        return std::nullopt;
    double const fraction = above / approach;
    btVector3 const point = from + way * fraction;
    if (point.x() * point.x() + point.z() * point.z() > radius * radius)
        return std::nullopt;
    return RayEntry{fraction, btVector3(0, facing, 0)};
}

std::optional<RayEntry> enterCylinder(double radius, double halfHeight, btVector3 const& from, btVector3 const& way) {
    double const facing = way.y() > 0 ? -1 : 1;
    return nearer(enterTube(radius, halfHeight, from, way), enterDisc(radius, facing * halfHeight, facing, from, way));
}

std::optional<RayEntry> enterCapsule(double radius, double halfHeight, btVector3 const& from, btVector3 const& way) {
    btVector3 const end(0, halfHeight, 0);
    double const along = std::clamp(from.y(), -halfHeight, halfHeight);
    if ((from - btVector3(0, along, 0)).length2() < radius * radius)
        return std::nullopt;
    return nearer(enterTube(radius, halfHeight, from, way),
                  nearer(enterSphere(radius, from - end, way), enterSphere(radius, from + end, way)));
}

/// The tip stands at half the height; r(y) = slope (tip - y).
std::optional<RayEntry> enterCone(double radius, double halfHeight, btVector3 const& from, btVector3 const& way) {
    std::optional<RayEntry> entry;
    if (way.y() > 0)
        entry = enterDisc(radius, -halfHeight, -1, from, way);
    double const slope = radius / (2 * halfHeight);
    double const left = slope * (halfHeight - from.y());
    double const lost = slope * way.y();
    double const a = way.x() * way.x() + way.z() * way.z() - lost * lost;
    double const b = from.x() * way.x() + from.z() * way.z() + left * lost;
    double const c = from.x() * from.x() + from.z() * from.z() - left * left;
    double const square = b * b - a * c;
    if (square < 0)
        return entry;
    // Both roots count: the quadric has a second cone above the tip.
    double const q = -(b + std::copysign(std::sqrt(square), b));
    for (double const fraction : {q / a, c / q}) {
        btVector3 const point = from + way * fraction;
        if (!(fraction >= 0 && fraction <= 1) || std::abs(point.y()) > halfHeight)
            continue;
        btVector3 const normal = btVector3(point.x(), slope * slope * (halfHeight - point.y()), point.z()).normalized();
        if (normal.dot(way) < 0)
            entry = nearer(entry, RayEntry{fraction, normal});
    }
    return entry;
}

std::optional<RayEntry> enterPlane(hyx::Plane const& plane, btVector3 const& from, btVector3 const& way) {
    btVector3 const normal = hyx::toBullet(plane.getNormal());
    double const above = normal.dot(from) + plane.getD();
    double const approach = -normal.dot(way);
    if (above < 0 || above > approach || approach == 0)
        return std::nullopt;
    return RayEntry{above / approach, normal};
}

} // namespace

std::optional<RayEntry> castConvexMeshRay(Trimesh const& mesh, btVector3 const& from, btVector3 const& to) {
    btVector3 const way = to - from;
    double entry = -1;
    double exit = 1;
    RayEntry result{0, btVector3(0, 0, 0)};
    for (hyx::UInt i = 0; i < mesh.getNumTriangles(); ++i) {
        btVector3 const normal = hyx::toBullet(mesh.getTriangleNormal(i));
        double const above = normal.dot(from - hyx::toBullet(mesh.getVertices()[mesh.getIndices()[3 * i]]));
        double const approach = -normal.dot(way);
        if (approach == 0 && above > 0)
            return std::nullopt;
        if (approach > 0 && above / approach > entry) {
            entry = above / approach;
            result = {entry, normal, i};
        } else if (approach < 0) {
            exit = std::min(exit, above / approach);
        }
    }
    return entry >= 0 && entry <= exit ? std::optional(result) : std::nullopt;
}

bool hasExactRay(Shape const& shape) {
    switch (shape.getType()) {
    case Shape::BOX:
    case Shape::SPHERE:
    case Shape::CYLINDER:
    case Shape::CAPSULE:
    case Shape::CONE:
    case Shape::PLANE:
        return true;
    default:
        return false;
    }
}

std::optional<RayEntry> castExactRay(Shape const& shape, btVector3 const& from, btVector3 const& to) {
    btVector3 const way = to - from;
    switch (shape.getType()) {
    case Shape::SPHERE:
        return enterSphere(static_cast<Sphere const&>(shape).getRadius(), from, way);
    case Shape::BOX:
        return enterBox(static_cast<Box const&>(shape).getHalfExtents(), from, way);
    case Shape::CYLINDER: {
        auto const& cylinder = static_cast<Cylinder const&>(shape);
        return enterCylinder(cylinder.getRadius(), cylinder.getHeight() / 2, from, way);
    }
    case Shape::CAPSULE: {
        auto const& capsule = static_cast<Capsule const&>(shape);
        return enterCapsule(capsule.getRadius(), capsule.getHeight() / 2, from, way);
    }
    case Shape::CONE: {
        auto const& cone = static_cast<Cone const&>(shape);
        return enterCone(cone.getRadius(), cone.getHeight() / 2, from, way);
    }
    case Shape::PLANE:
        return enterPlane(static_cast<Plane const&>(shape).getPlane(), from, way);
    default:
        return std::nullopt;
    }
}

} // namespace hyxCollide
