// Finds how deep grains are in the geometries of a body.
#include "reference/hyx/particles/body_obstacle.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/shape.h"
#include "reference/hyx/particles/nearest_surface.h"

namespace hyx {

bool BodyObstacle::find(Vec3 const& position, Real reach, Surface& surface) const {
    if (!m_body->isEnabled())
        return false;
    bool found = false;
    for (auto const& geometry : m_body->getGeometries()) {
        if (!geometry->getEnableCollisions() || geometry->isSensor())
            continue;
        AffineMatrix4x4 const transform = geometry->getTransform();
        Surface candidate;
        if (!findNearestSurface(*geometry->getShape(), transform.inverse().transformPoint(position), reach, candidate))
            continue;
        if (found && candidate.distance >= surface.distance)
            continue;
        surface = candidate;
        surface.normal = transform.transformVector(candidate.normal);
        found = true;
    }
    if (found)
        surface.velocity = m_body->getPointVelocity(position - surface.normal * surface.distance);
    return found;
}

} // namespace hyx
