// Joints that follow others.
#pragma once

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/event_listener.h"

namespace hyxtavlang {

/// Locks a joint where another one says: at `multiplier` times its position plus `offset`. The lock's force is the
/// follower's, and does not act back on the leader.
class Mimic : public hyxSDK::EventListener {
public:
    Mimic(hyx::Constraint1DOF* follower, hyx::Constraint1DOF const* leader, double multiplier, double offset)
        : m_follower(follower), m_leader(leader), m_multiplier(multiplier), m_offset(offset) {
        setMask(PRE_COLLIDE_STEP);
        follower->getLock1D()->setEnable(true);
        follower->getLock1D()->setForceRange(follower->getMotor1D()->getForceRange());
    }

    void preCollide(hyx::TimeStamp) override {
        m_follower->getLock1D()->setPosition(m_multiplier * m_leader->getAngle() + m_offset);
    }

protected:
    ~Mimic() override = default;

private:
    hyx::ref_ptr<hyx::Constraint1DOF> m_follower;
    hyx::ref_ptr<hyx::Constraint1DOF const> m_leader;
    double m_multiplier;
    double m_offset;
};

} // namespace hyxtavlang
