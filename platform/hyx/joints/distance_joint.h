// The joint that rules the distance of two points.
#pragma once

#include "platform/hyx/joints/constraint1dof.h"

namespace hyx {

/// Acts along the line between two points only; its lock is on at the start and holds the distance they have.
class DistanceJoint : public Constraint1DOF {
public:
    /// The frames' origins are the two points. Null frames are the bodies' own; a null second body is the world.
    DistanceJoint(RigidBody* body1, Frame* frame1, RigidBody* body2 = nullptr, Frame* frame2 = nullptr);
    /// Between two points of the world, as the bodies stand now.
    DistanceJoint(Vec3 const& worldPoint1, Vec3 const& worldPoint2, RigidBody* body1, RigidBody* body2 = nullptr);

protected:
    ~DistanceJoint() override = default;
};

} // namespace hyx
