// Solves rays against balls and boxes in closed form.
#include "reference/machinery/bullet/exact_ray.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/sphere.h"

#include <cmath>

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

} // namespace

std::optional<RayEntry> castExactRay(Shape const& shape, btVector3 const& from, btVector3 const& to) {
    if (shape.getType() == Shape::SPHERE)
        return enterSphere(static_cast<Sphere const&>(shape).getRadius(), from, to - from);
    return enterBox(static_cast<Box const&>(shape).getHalfExtents(), from, to - from);
}

} // namespace hyxCollide
