// The enumerators of constraints.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyx/joints/cylindrical_joint.h"

namespace modules {

inline constexpr runtime::Constant joint_constants[] = {
    {"Constraint_TRANSLATIONAL", hyx::Constraint::TRANSLATIONAL},
    {"Constraint_ROTATIONAL", hyx::Constraint::ROTATIONAL},
    {"CylindricalJoint_TRANSLATION", hyx::CylindricalJoint::TRANSLATION},
    {"CylindricalJoint_ROTATION", hyx::CylindricalJoint::ROTATION},
};

} // namespace modules
