// The joint of a drawer.
#pragma once

#include "platform/hyx/joints/constraint1dof.h"

namespace hyx {

/// Slides along one axis only.
class Prismatic : public Constraint1DOF {
public:
    /// The frames' Z axes are the axis. Null frames are the bodies' own; a null second body is the world.
    Prismatic(RigidBody* body1, Frame* frame1, RigidBody* body2 = nullptr, Frame* frame2 = nullptr);
    /// At a point and along an axis of the world, as the bodies stand now. Throws std::invalid_argument for a zero
    /// axis.
    Prismatic(Vec3 const& worldPoint, Vec3 const& worldAxis, RigidBody* body1, RigidBody* body2 = nullptr);

protected:
    ~Prismatic() override = default;
};

} // namespace hyx
