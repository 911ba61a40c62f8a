// Joints that follow others.
#pragma once

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/event_listener.h"

#include <array>

namespace hyxtavlang {

/// Locks a joint where another one says, by a polynomial of its position; the lowest power comes first. The lock's
/// force is the follower's, and does not act back on the leader.
class Mimic : public hyxSDK::EventListener {
public:
    Mimic(hyx::Constraint1DOF* follower, hyx::Constraint1DOF const* leader, std::array<double, 5> const& factors)
        : m_follower(follower), m_leader(leader), m_factors(factors) {
        setMask(PRE_COLLIDE_STEP);
        follower->getLock1D()->setEnable(true);
        follower->getLock1D()->setForceRange(follower->getMotor1D()->getForceRange());
    }

    void preCollide(hyx::TimeStamp) override {
        double position = 0;
        for (auto factor = m_factors.rbegin(); factor != m_factors.rend(); ++factor)
            position = position * m_leader->getAngle() + *factor;
        m_follower->getLock1D()->setPosition(position);
    }

protected:
    ~Mimic() override = default;

private:
    hyx::ref_ptr<hyx::Constraint1DOF> m_follower;
    hyx::ref_ptr<hyx::Constraint1DOF const> m_leader;
    std::array<double, 5> m_factors;
};

} // namespace hyxtavlang
