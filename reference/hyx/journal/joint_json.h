// Joints as JSON.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"

#include <nlohmann/json.hpp>

namespace hyx {

/// The joint's kind, name, bodies by their places, attachment frames in them, and range. Null for joints that cannot be
/// made anew, or have a body that is not among `bodies`.
nlohmann::json describeJoint(Constraint const& joint, RigidBodyPtrVector const& bodies);

/// Throws std::exception for what is no description of a joint of these bodies.
ref_ptr<Constraint> makeJoint(nlohmann::json const& description, RigidBodyPtrVector const& bodies);

} // namespace hyx
