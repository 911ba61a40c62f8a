// Joints of a model tree as constraints.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyxtavlang/model_joints.h"

namespace hyxtavlang {

/// The joint between two bodies as they stand, with its limits and its friction; its motor, off at first, has the
/// joint's effort. `frame` is where the child of the tree stands, whose body may be a part of `child`; `parent` may be
/// null, for the world. Null for a free joint, which holds nothing, and for a locked one that closes no loop.
hyx::ref_ptr<hyx::Constraint> makeJoint(tavlang::Robotics::Joints::Joint const& joint,
                                        hyx::AffineMatrix4x4 const& frame, hyx::RigidBody* parent,
                                        hyx::RigidBody* child);

} // namespace hyxtavlang
