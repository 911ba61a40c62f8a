// The joint that lets nothing move.
#pragma once

#include "platform/hyx/joints/constraint.h"

namespace hyx {

/// Holds two bodies together in every direction.
class LockJoint : public Constraint {
public:
    /// The frames are held together. Null frames are the bodies' own; a null second body is the world.
    LockJoint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2);
    /// As the bodies stand now.
    explicit LockJoint(RigidBody* body1, RigidBody* body2 = nullptr);

protected:
    ~LockJoint() override = default;
};

} // namespace hyx
