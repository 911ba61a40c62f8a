// The joints of a robot description.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"

#include <urdf_model/joint.h>

namespace hyxtavlang {

/// The joint between two bodies that stand as described, with its limits and its friction; its motor, off at first, has
/// the joint's effort. Null for a floating one, which holds nothing; a fixed one is none between bodies and throws.
hyx::ref_ptr<hyx::Constraint> makeJoint(urdf::Joint const& joint, hyx::RigidBody* parent, hyx::RigidBody* child);

} // namespace hyxtavlang
