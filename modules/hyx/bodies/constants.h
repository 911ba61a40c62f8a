// The enumerators of bodies.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace modules {

inline constexpr runtime::Constant rigid_body_constants[] = {
    {"RigidBody_DYNAMICS", hyx::RigidBody::DYNAMICS},
    {"RigidBody_KINEMATICS", hyx::RigidBody::KINEMATICS},
    {"RigidBody_STATIC", hyx::RigidBody::STATIC},
};

} // namespace modules
