// What is known of two geometries that touch.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vector.h"
#include "platform/hyxCollide/geometry.h"

namespace hyxCollide {

/// One point where two geometries touch. The force is that of the last step, on the second geometry's body.
struct ContactPoint {
    hyx::Vec3 point;
    /// Of length one, from the first geometry to the second.
    hyx::Vec3 normal;
    /// Metres of penetration; negative for a gap that closes.
    hyx::Real depth = 0;
    /// Newtons along the normal, never negative.
    hyx::Real normalForce = 0;
    /// Newtons, at right angles to the normal.
    hyx::Vec3 tangentialForce;

    /// On the second body, newtons, in world coordinates.
    hyx::Vec3 getForce() const { return normal * normalForce + tangentialForce; }
};

using ContactPointVector = hyx::Vector<ContactPoint>;

/// All points where two geometries touch, as a copy: it stays as it is when the simulation goes on.
class LocalGeometryContact {
public:
    LocalGeometryContact() = default;

    LocalGeometryContact(Geometry* geometry1, Geometry* geometry2) : m_geometries{geometry1, geometry2} {}

    /// False for the empty contact, which has no geometries.
    bool isValid() const { return m_geometries[0] || m_geometries[1]; }

    /// 0 or 1; null for any other index and in an empty contact.
    Geometry* getGeometry(hyx::UInt index) const { return index < 2 ? m_geometries[index].get() : nullptr; }

    /// The body of side 0 or 1; null where the geometry has none.
    hyx::RigidBody* getRigidBody(hyx::UInt index) const;

    /// The points that touch.
    ContactPointVector const& points() const { return m_points; }

    ContactPointVector& points() { return m_points; }

    /// How many points touch.
    hyx::UInt getNumPoints() const { return m_points.size(); }

    /// Throws std::out_of_range for a point that is not there.
    ContactPoint getPoint(hyx::UInt index) const { return m_points.at(index); }

    /// The sum of the forces of all points on the second geometry's body.
    hyx::Vec3 getForce() const;

private:
    hyx::ref_ptr<Geometry> m_geometries[2];
    ContactPointVector m_points;
};

using LocalGeometryContactVector = hyx::Vector<LocalGeometryContact>;

} // namespace hyxCollide
