// What the joints with a single free direction have in common.
#pragma once

#include "platform/hyx/joints/constraint.h"
#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/range1d.h"

namespace hyx {

/// A joint with one free direction, which a motor, a range and a lock can act on.
class Constraint1DOF : public Constraint {
public:
    /// The angle in radians, counted over full turns, or the distance in metres, of the first body relative to the
    /// second; 0 where the attachment frames agree.
    Real getAngle() const;
    /// rad/s or m/s.
    Real getCurrentSpeed() const;

    /// Resists motion along or about the free direction with up to this force, in newtons or newton metres; 0, the
    /// start, is none. While above 0 it is one more row, as is the viscosity. Throws std::invalid_argument when
    /// negative or not finite.
    void setFriction(Real force);
    Real getFriction() const;
    /// Resists motion with a force proportional to its speed, in N s/m or Nm s/rad; 0, the start, is none. Throws
    /// std::invalid_argument when negative or not finite.
    void setViscosity(Real viscosity);
    Real getViscosity() const;

    /// What drives the free direction; off at the start.
    Motor1D* getMotor1D() const { return m_motor.get(); }

    /// What bounds the free direction; off at the start.
    Range1D* getRange1D() const { return m_range.get(); }

    /// What holds the free direction at a position; off at the start.
    Lock1D* getLock1D() const { return m_lock.get(); }

protected:
    Constraint1DOF(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2);
    ~Constraint1DOF() override;

private:
    ref_ptr<Motor1D> m_motor;
    ref_ptr<Range1D> m_range;
    ref_ptr<Lock1D> m_lock;
};

} // namespace hyx
