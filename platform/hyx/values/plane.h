// Planes that divide space.
#pragma once

#include "platform/hyx/values/vec3.h"

namespace hyx {

/// The plane of all points p with normal . p + d = 0.
class Plane {
public:
    /// The ground, z = 0, facing up.
    Plane() : m_normal(0, 0, 1), m_d(0) {}

    /// The plane a x + b y + c z + d = 0. Throws std::invalid_argument when a, b and c are all zero.
    Plane(double a, double b, double c, double d);
    Plane(Vec3 const& normal, double d);
    /// The plane through `point`. Throws std::invalid_argument for a zero normal.
    Plane(Vec3 const& normal, Vec3 const& point);
    /// The plane through three points, facing the side from which they run counter-clockwise. Throws
    /// std::invalid_argument when they lie on a line.
    Plane(Vec3 const& first, Vec3 const& second, Vec3 const& third);

    /// The direction in which the plane faces, of length one.
    Vec3 getNormal() const { return m_normal; }

    /// How far the origin lies above the plane, metres; negative below.
    double getD() const { return m_d; }

    /// A point of the plane, the one nearest to the origin.
    Vec3 getPoint() const { return m_normal * -m_d; }

    /// Positive on the side to which the normal points, in metres.
    double distance(Vec3 const& point) const { return m_normal.dot(point) + m_d; }

    /// The point of the plane that is nearest to this one, metres.
    Vec3 project(Vec3 const& point) const { return point - m_normal * distance(point); }

private:
    Vec3 m_normal;
    double m_d;
};

} // namespace hyx
