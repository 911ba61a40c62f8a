// The part of a joint that drives it.
#pragma once

#include "platform/hyx/joints/elementary_constraint.h"

#include <limits>

namespace hyx {

/// Drives a joint's free direction at a speed, as far as its force range lets it.
class Motor1D : public ElementaryConstraint {
public:
    /// m/s or rad/s. Throws std::invalid_argument when not finite.
    void setSpeed(Real speed);

    Real getSpeed() const { return m_speed; }

    /// The greatest speed that the motor drives at, whatever `setSpeed` says, and that the joint's lock goes to its
    /// position at, where it is rigid: m/s or rad/s. Infinite at the start.
    /// Throws std::invalid_argument when negative or not a number.
    void setMaximumSpeed(Real speed);

    Real getMaximumSpeed() const { return m_maximumSpeed; }

    /// The speed that the motor aims at: the one that it was set to, within its greatest.
    Real getTargetSpeed() const { return RangeReal(m_maximumSpeed).clamp(m_speed); }

protected:
    ~Motor1D() override = default;

private:
    Real m_speed = 0;
    Real m_maximumSpeed = std::numeric_limits<Real>::infinity();
};

} // namespace hyx
