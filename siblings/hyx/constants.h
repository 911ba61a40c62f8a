// The enumerators of _hyx.
#pragma once

#include "platform/hyx/cylindrical_joint.h"
#include "platform/hyx/notify.h"
#include "platform/hyx/rigid_body.h"

namespace {

struct Constant {
    const char *name;
    long value;
};

constexpr Constant constants[] = {
    {"RigidBody_DYNAMICS", hyx::RigidBody::DYNAMICS},
    {"RigidBody_KINEMATICS", hyx::RigidBody::KINEMATICS},
    {"RigidBody_STATIC", hyx::RigidBody::STATIC},
    {"Constraint_TRANSLATIONAL", hyx::Constraint::TRANSLATIONAL},
    {"Constraint_ROTATIONAL", hyx::Constraint::ROTATIONAL},
    {"CylindricalJoint_TRANSLATION", hyx::CylindricalJoint::TRANSLATION},
    {"CylindricalJoint_ROTATION", hyx::CylindricalJoint::ROTATION},
};

} // namespace
