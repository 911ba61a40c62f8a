// Checks what motors, ranges and locks are set to.
#include "platform/hyx/joints/elementary_constraint.h"

#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "reference/hyx/values/number_checks.h"

#include <stdexcept>

namespace hyx {

void ElementaryConstraint::setCompliance(Real compliance) {
    m_compliance = requireNonNegative(compliance, "a compliance");
}

void ElementaryConstraint::setDamping(Real time) {
    m_damping = requireNonNegative(time, "a damping time");
}

void Motor1D::setSpeed(Real speed) {
    m_speed = requireFinite(speed, "the speed of a motor");
}

void Motor1D::setMaximumSpeed(Real speed) {
    if (!(speed >= 0))
        throw std::invalid_argument("the maximum speed of a motor must not be negative");
    m_maximumSpeed = speed;
}

void Lock1D::setPosition(Real position) {
    m_position = requireFinite(position, "the position of a lock");
}

} // namespace hyx
