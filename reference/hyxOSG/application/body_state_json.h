// The state of a body as JSON.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <nlohmann/json.hpp>

namespace hyxOSG {

/// `position`, `rotation` (x y z w), `velocity` and `angularVelocity` in SI units.
nlohmann::json bodyState(hyx::RigidBody const& body);

/// Sets what `state` has of those, and adds its `force` and `torque`. Throws std::invalid_argument for values that are
/// not lists of finite numbers, before anything is changed.
void setBodyState(hyx::RigidBody& body, nlohmann::json const& state);

} // namespace hyxOSG
