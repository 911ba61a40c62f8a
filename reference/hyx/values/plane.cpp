// Planes from points and normals.
#include "platform/hyx/values/plane.h"

#include <stdexcept>

namespace hyx {

Plane::Plane(double a, double b, double c, double d) : Plane(Vec3(a, b, c), d) {}

Plane::Plane(Vec3 const& normal, double d) : m_normal(normal) {
    double const length = m_normal.normalize();
    if (!(length > 0))
        throw std::invalid_argument("a plane needs a normal other than zero");
    m_d = d / length;
}

Plane::Plane(Vec3 const& normal, Vec3 const& point) : Plane(normal, -normal.dot(point)) {}

Plane::Plane(Vec3 const& first, Vec3 const& second, Vec3 const& third)
    : Plane((second - first).cross(third - first), first) {}

} // namespace hyx
