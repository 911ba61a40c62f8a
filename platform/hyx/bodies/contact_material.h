// What happens where two given materials touch, in place of the rule that mixes them.
#pragma once

#include "platform/hyx/objects/object.h"

namespace hyx {

class Material;

/// How two given materials behave where they touch, in place of what follows from each.
class ContactMaterial : public Object {
public:
    /// Throws std::invalid_argument when a material is null.
    ContactMaterial(Material* first, Material* second);

    /// One of the two.
    Material* getMaterial1() const { return m_first.get(); }

    /// The other one.
    Material* getMaterial2() const { return m_second.get(); }

    /// The friction coefficient; at the start what follows from both materials. Throws std::invalid_argument when
    /// negative or not finite.
    void setFriction(Real friction);

    Real getFriction() const { return m_friction; }

    /// 0 to 1. Throws std::invalid_argument outside.
    void setRestitution(Real restitution);

    Real getRestitution() const { return m_restitution; }

    /// Metres: rolling torque over normal force.
    void setRollingResistance(Real length);

    Real getRollingResistance() const { return m_rollingResistance; }

    /// Newtons per metre of penetration; infinite (the start) for hard contacts. Throws std::invalid_argument unless
    /// positive.
    void setStiffness(Real stiffness);

    Real getStiffness() const { return m_stiffness; }

    /// Newton seconds per metre, used with a finite stiffness.
    void setDamping(Real damping);

    Real getDamping() const { return m_damping; }

    /// The coefficients that a pair of materials has without a contact material. Null stands for a default material.
    static Real combinedFriction(Material const* first, Material const* second);
    static Real combinedRestitution(Material const* first, Material const* second);
    static Real combinedRollingResistance(Material const* first, Material const* second);

protected:
    ~ContactMaterial() override;

private:
    ref_ptr<Material> m_first;
    ref_ptr<Material> m_second;
    Real m_friction;
    Real m_restitution;
    Real m_rollingResistance;
    Real m_stiffness;
    Real m_damping;
};

} // namespace hyx
