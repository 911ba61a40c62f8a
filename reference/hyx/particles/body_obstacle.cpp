// Finds how deep grains are in the geometries of a body.
#include "reference/hyx/particles/body_obstacle.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/shape.h"
#include "reference/hyx/particles/nearest_surface.h"

namespace hyx {

std::vector<BodyObstacle::Part> BodyObstacle::partsNow() const {
    std::vector<Part> parts;
    if (!m_body->isEnabled())
        return parts;
    for (auto const& geometry : m_body->getGeometries()) {
        if (!geometry->getEnableCollisions() || geometry->isSensor())
            continue;
        AffineMatrix4x4 const transform = geometry->getTransform();
        parts.push_back({geometry->getShape(), transform, transform.inverse()});
    }
    return parts;
}

void BodyObstacle::prepare(Real rounding) {
    m_rounding = rounding;
    m_parts = partsNow();
}

bool BodyObstacle::find(Part const& part, Vec3 const& position, Real reach, Surface& surface) const {
    if (!findNearestSurface(*part.shape, part.toShape.transformPoint(position), reach, surface, m_rounding))
        return false;
    surface.normal = part.toWorld.transformVector(surface.normal);
    surface.velocity = m_body->getPointVelocity(position - surface.normal * surface.distance);
    return true;
}

void BodyObstacle::findAll(Vec3 const& position, Real reach, std::vector<Surface>& surfaces) const {
    Surface found;
    for (Part const& part : m_parts)
        if (find(part, position, reach, found))
            surfaces.push_back(found);
}

bool BodyObstacle::find(Vec3 const& position, Real reach, Surface& surface) const {
    bool any = false;
    Surface found;
    for (Part const& part : partsNow())
        if (find(part, position, reach, found) && (!any || found.distance < surface.distance)) {
            surface = found;
            any = true;
        }
    return any;
}

void BodyObstacle::push(Vec3 const& impulse, Vec3 const& point, Real timeStep) {
    if (m_body->getMotionControl() == RigidBody::DYNAMICS && m_body->isEnabled())
        m_body->addForceAtPosition(impulse / timeStep, point);
}

} // namespace hyx
