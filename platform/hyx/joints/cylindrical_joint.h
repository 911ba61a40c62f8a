// The joint of a shaft that slides and turns in its bearing.
#pragma once

#include "platform/hyx/joints/constraint.h"
#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/range1d.h"

namespace hyx {

/// Slides along one axis and turns about it; both directions have a motor, a range and a lock.
class CylindricalJoint : public Constraint {
public:
    /// The two free directions.
    enum DOF { TRANSLATION = 0, ROTATION = 1 };

    /// The frames' Z axes are the axis. Null frames are the bodies' own; a null second body is the world.
    CylindricalJoint(RigidBody* body1, Frame* frame1, RigidBody* body2 = nullptr, Frame* frame2 = nullptr);
    /// At a point and along an axis of the world, as the bodies stand now. Throws std::invalid_argument for a zero
    /// axis.
    CylindricalJoint(Vec3 const& worldPoint, Vec3 const& worldAxis, RigidBody* body1, RigidBody* body2 = nullptr);
    /// Metres, or radians counted over full turns. Throws std::out_of_range for a direction that is not there, as do
    /// the others.
    Real getAngle(UInt dof) const;
    /// Metres or radians per second.
    Real getCurrentSpeed(UInt dof) const;
    /// What drives a direction; off at the start.
    Motor1D* getMotor1D(UInt dof) const;
    /// What bounds a direction; off at the start.
    Range1D* getRange1D(UInt dof) const;
    /// What holds a direction at a position; off at the start.
    Lock1D* getLock1D(UInt dof) const;

protected:
    ~CylindricalJoint() override;

private:
    struct FreeDirection {
        ref_ptr<Motor1D> motor;
        ref_ptr<Range1D> range;
        ref_ptr<Lock1D> lock;
    };

    FreeDirection const& direction(UInt dof) const;

    FreeDirection m_free[2];
};

} // namespace hyx
