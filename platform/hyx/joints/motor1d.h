// The part of a joint that drives it.
#pragma once

#include "platform/hyx/joints/elementary_constraint.h"

namespace hyx {

/// Drives a joint's free direction at a speed, as far as its force range lets it.
class Motor1D : public ElementaryConstraint {
public:
    /// m/s or rad/s. Throws std::invalid_argument when not finite.
    void setSpeed(Real speed);

    Real getSpeed() const { return m_speed; }

protected:
    ~Motor1D() override = default;

private:
    Real m_speed = 0;
};

} // namespace hyx
