// Adds masses by the parallel axis theorem.
#include "reference/hyxtavlang/link_masses.h"

#include "reference/hyxtavlang/urdf_geometry.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

namespace hyxtavlang {
namespace {

/// Many descriptions leave zeros.
bool isPositive(btMatrix3x3 const& tensor) {
    return tensor[0][0] > 0 && tensor[0][0] * tensor[1][1] > tensor[0][1] * tensor[0][1] && tensor.determinant() > 0;
}

btMatrix3x3 inertiaOfPoint(double mass, btVector3 const& place) {
    double const x = place.x(), y = place.y(), z = place.z();
    return btMatrix3x3(y * y + z * z, -x * y, -x * z, -x * y, x * x + z * z, -y * z, -x * z, -y * z, x * x + y * y) *
           mass;
}

} // namespace

void LinkMasses::add(urdf::Inertial const& inertial, hyx::AffineMatrix4x4 const& link) {
    if (!(inertial.mass > 0))
        return;
    btTransform const frame = hyx::toBullet(toMatrix(inertial.origin) * link);
    btMatrix3x3 const tensor(inertial.ixx, inertial.ixy, inertial.ixz, inertial.ixy, inertial.iyy, inertial.iyz,
                             inertial.ixz, inertial.iyz, inertial.izz);
    m_mass += inertial.mass;
    m_moment += frame.getOrigin() * inertial.mass;
    m_inertia = m_inertia + inertiaOfPoint(inertial.mass, frame.getOrigin());
    if (isPositive(tensor))
        m_inertia = m_inertia + frame.getBasis() * tensor * frame.getBasis().transpose();
}

void LinkMasses::giveTo(hyx::RigidBody& body) const {
    btVector3 const center = m_moment / m_mass;
    btMatrix3x3 const tensor = m_inertia - inertiaOfPoint(m_mass, center);
    body.setMass(m_mass);
    body.setCenterOfMass(hyx::fromBullet(center));
    if (isPositive(tensor))
        body.implementation().setInertiaTensor(tensor);
}

} // namespace hyxtavlang
