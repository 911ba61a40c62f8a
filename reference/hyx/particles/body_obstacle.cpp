// Finds how deep grains are in the geometries of a body.
#include "reference/hyx/particles/body_obstacle.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/shape.h"
#include "reference/hyx/particles/nearest_surface.h"

namespace hyx {

void BodyObstacle::prepare() {
    m_parts.clear();
    if (!m_body->isEnabled())
        return;
    for (auto const& geometry : m_body->getGeometries()) {
        if (!geometry->getEnableCollisions() || geometry->isSensor())
            continue;
        AffineMatrix4x4 const transform = geometry->getTransform();
        m_parts.push_back({geometry->getShape(), transform, transform.inverse()});
    }
}

void BodyObstacle::findAll(Vec3 const& position, Real reach, std::vector<Surface>& surfaces) const {
    for (Part const& part : m_parts) {
        Surface found;
        if (!findNearestSurface(*part.shape, part.toShape.transformPoint(position), reach, found))
            continue;
        found.normal = part.toWorld.transformVector(found.normal);
        found.velocity = m_body->getPointVelocity(position - found.normal * found.distance);
        surfaces.push_back(found);
    }
}

bool BodyObstacle::find(Vec3 const& position, Real reach, Surface& surface) const {
    ref_ptr<BodyObstacle> const now = new BodyObstacle(m_body.get());
    now->prepare();
    std::vector<Surface> surfaces;
    now->findAll(position, reach, surfaces);
    for (Surface const& found : surfaces)
        if (&found == &surfaces.front() || found.distance < surface.distance)
            surface = found;
    return !surfaces.empty();
}

void BodyObstacle::push(Vec3 const& impulse, Vec3 const& point, Real timeStep) {
    if (m_body->getMotionControl() == RigidBody::DYNAMICS && m_body->isEnabled())
        m_body->addForceAtPosition(impulse / timeStep, point);
}

} // namespace hyx
