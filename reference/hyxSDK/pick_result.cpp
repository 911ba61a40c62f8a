// Orders what a ray met by distance.
#include "platform/hyxSDK/pick_result.h"

#include "platform/hyx/bodies/rigid_body.h"

namespace hyxSDK {

hyxCollide::Geometry* PickResult::getGeometry() const {
    return isValid() ? m_contacts.front().getGeometry(0) : nullptr;
}

hyx::RigidBody* PickResult::getRigidBody() const {
    return isValid() ? m_contacts.front().getRigidBody(0) : nullptr;
}

hyx::Vec3 PickResult::getPoint() const {
    return isValid() ? m_contacts.front().getPoint(0).point : hyx::Vec3();
}

hyx::Vec3 PickResult::getNormal() const {
    return isValid() ? m_contacts.front().getPoint(0).normal : hyx::Vec3();
}

void PickResult::add(hyxCollide::Geometry* geometry, hyx::Vec3 const& point, hyx::Vec3 const& normal,
                     hyx::Real distance) {
    hyxCollide::LocalGeometryContact contact(geometry, nullptr);
    hyxCollide::ContactPoint place;
    place.point = point;
    place.normal = normal;
    contact.points().push_back(place);
    m_contacts.push_back(contact);
    m_distances.push_back(distance);
}

} // namespace hyxSDK
