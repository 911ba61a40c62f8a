// What the surface and the inside of a body are made of.
#pragma once

#include "platform/hyx/objects/object.h"

namespace hyx {

/// What a geometry is made of. How two materials behave together follows from both unless a ContactMaterial says
/// otherwise.
class Material : public Object {
public:
    explicit Material(Name const& name = Name()) : Object(name) {}

    /// kg/m3, 1000 at the start. Bodies take it over with RigidBody::updateMassProperties. Throws std::invalid_argument
    /// unless positive and finite.
    void setDensity(Real density);

    Real getDensity() const { return m_density; }

    /// The friction of a pair is the root of the product of both; 0.5 at the start. Throws std::invalid_argument when
    /// negative or not finite, as do the others.
    void setFriction(Real friction);

    Real getFriction() const { return m_friction; }

    /// The restitution of a pair is the larger one; 0 at the start. Throws std::invalid_argument unless 0 to 1.
    void setRestitution(Real restitution);

    Real getRestitution() const { return m_restitution; }

    /// The resistance to rolling as a length in metres: rolling torque over normal force; 0 at the start.
    void setRollingResistance(Real length);

    Real getRollingResistance() const { return m_rollingResistance; }

protected:
    ~Material() override = default;

private:
    Real m_density = 1000;
    Real m_friction = 0.5;
    Real m_restitution = 0;
    Real m_rollingResistance = 0;
};

} // namespace hyx
