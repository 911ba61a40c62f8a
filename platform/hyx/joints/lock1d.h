// The part of a joint that holds it where it is to be.
#pragma once

#include "platform/hyx/joints/elementary_constraint.h"

namespace hyx {

/// Holds a joint's free direction at a position.
class Lock1D : public ElementaryConstraint {
public:
    /// Metres or radians. Throws std::invalid_argument when not finite.
    void setPosition(Real position);

    Real getPosition() const { return m_position; }

protected:
    ~Lock1D() override = default;

private:
    Real m_position = 0;
};

} // namespace hyx
