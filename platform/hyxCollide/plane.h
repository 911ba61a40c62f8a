// Endless ground as a collision shape.
#pragma once

#include "platform/hyx/values/plane.h"
#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// An endless plane; all below it is solid. Only for bodies that do not move by forces.
class Plane : public Shape {
public:
    /// The ground, z = 0, facing up.
    Plane() = default;

    explicit Plane(hyx::Plane const& plane) : m_plane(plane) {}

    /// Throws std::invalid_argument for a zero normal, as does the next.
    Plane(hyx::Vec3 const& normal, hyx::Vec3 const& point) : m_plane(normal, point) {}

    Plane(hyx::Real a, hyx::Real b, hyx::Real c, hyx::Real d) : m_plane(a, b, c, d) {}

    /// All below it is solid.
    void setPlane(hyx::Plane const& plane);

    hyx::Plane const& getPlane() const { return m_plane; }

    /// The direction away from what is solid, of length one.
    hyx::Vec3 getNormal() const { return m_plane.getNormal(); }

    Type getType() const override { return PLANE; }

    hyx::Real getVolume() const override { return 0; }

    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Plane() override = default;

private:
    hyx::Plane m_plane;
};

} // namespace hyxCollide
