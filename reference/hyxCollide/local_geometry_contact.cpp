// What a contact tells of its bodies and forces.
#include "platform/hyxCollide/local_geometry_contact.h"

#include "platform/hyx/bodies/rigid_body.h"

namespace hyxCollide {

hyx::RigidBody* LocalGeometryContact::getRigidBody(hyx::UInt index) const {
    Geometry const* geometry = getGeometry(index);
    return geometry ? geometry->getRigidBody() : nullptr;
}

hyx::Vec3 LocalGeometryContact::getForce() const {
    hyx::Vec3 sum;
    for (ContactPoint const& point : m_points)
        sum += point.getForce();
    return sum;
}

} // namespace hyxCollide
