// The joint of a ball in its socket.
#pragma once

#include "platform/hyx/joints/constraint.h"

namespace hyx {

/// Holds two points together and lets the bodies turn about them.
class BallJoint : public Constraint {
public:
    /// The frames' origins are held together. Null frames are the bodies' own; a null second body is the world.
    BallJoint(RigidBody* body1, Frame* frame1, RigidBody* body2 = nullptr, Frame* frame2 = nullptr);
    /// At a point of the world, as the bodies stand now.
    BallJoint(Vec3 const& worldPoint, RigidBody* body1, RigidBody* body2 = nullptr);

protected:
    ~BallJoint() override = default;
};

} // namespace hyx
