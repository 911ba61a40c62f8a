// Adds masses by the parallel axis theorem.
#include "reference/hyxtavlang/body_masses.h"

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

void BodyMasses::add(tavlang::Physics3D::Body const& part, hyx::AffineMatrix4x4 const& local) {
    btTransform const frame = hyx::toBullet(local);
    auto const& [xx, yy, zz, xy, xz, yz] = part.inertia;
    btMatrix3x3 const tensor(xx, xy, xz, xy, yy, yz, xz, yz, zz);
    btVector3 const center = frame * hyx::toBullet(part.centerOfMass);
    m_line = part.line;
    m_mass += part.mass;
    m_moment += center * part.mass;
    m_inertia = m_inertia + inertiaOfPoint(part.mass, center);
    if (isPositive(tensor))
        m_inertia = m_inertia + frame.getBasis() * tensor * frame.getBasis().transpose();
}

void BodyMasses::giveTo(hyx::RigidBody& body) const {
    btVector3 const center = m_moment / m_mass;
    btMatrix3x3 const tensor = m_inertia - inertiaOfPoint(m_mass, center);
    body.setMass(m_mass);
    body.setCenterOfMass(hyx::fromBullet(center));
    if (isPositive(tensor))
        body.implementation().setInertiaTensor(tensor);
}

} // namespace hyxtavlang
