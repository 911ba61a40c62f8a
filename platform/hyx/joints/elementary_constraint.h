// What motor, range and lock of a joint have in common.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/range_real.h"

namespace hyx {

/// One optional row of a joint along or about its free direction: off at the start.
class ElementaryConstraint : public Object {
public:
    /// Whether it acts. Off at the start.
    void setEnable(bool enable) { m_enabled = enable; }

    bool isEnabled() const { return m_enabled; }

    /// Newtons, or newton metres for a rotation.
    void setForceRange(RangeReal const& range) { m_forceRange = range; }

    RangeReal getForceRange() const { return m_forceRange; }

    /// Metres per newton, or radians per newton metre; 0 is rigid. Throws std::invalid_argument when negative or not
    /// finite.
    void setCompliance(Real compliance);

    Real getCompliance() const { return m_compliance; }

    /// The time in seconds in which an error of a compliant row dies out; 0 stands for 1 time step.
    void setDamping(Real time);

    Real getDamping() const { return m_damping; }

    /// The force or torque of the last step, newtons or newton metres; 0 while off.
    Real getCurrentForce() const { return m_currentForce; }

    /// Kept by the joint, which knows when a step has been solved.
    void setCurrentForce(Real force) { m_currentForce = force; }

protected:
    ~ElementaryConstraint() override = default;

private:
    bool m_enabled = false;
    RangeReal m_forceRange;
    Real m_compliance = 0;
    Real m_damping = 0;
    Real m_currentForce = 0;
};

} // namespace hyx
