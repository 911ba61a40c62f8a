// The enumerators of _hyx.
#pragma once

#include "platform/hyx/cylindrical_joint.h"
#include "platform/hyx/notify.h"
#include "platform/hyx/rigid_body.h"
#include "runtime/integer_constants.h"

namespace {

constexpr runtime::Constant constants[] = {
    {"Notify_NOTIFY_DEBUG", hyx::Notify::NOTIFY_DEBUG},
    {"Notify_NOTIFY_INFO", hyx::Notify::NOTIFY_INFO},
    {"Notify_NOTIFY_WARNING", hyx::Notify::NOTIFY_WARNING},
    {"Notify_NOTIFY_ERROR", hyx::Notify::NOTIFY_ERROR},
    {"RigidBody_DYNAMICS", hyx::RigidBody::DYNAMICS},
    {"RigidBody_KINEMATICS", hyx::RigidBody::KINEMATICS},
    {"RigidBody_STATIC", hyx::RigidBody::STATIC},
    {"Constraint_TRANSLATIONAL", hyx::Constraint::TRANSLATIONAL},
    {"Constraint_ROTATIONAL", hyx::Constraint::ROTATIONAL},
    {"CylindricalJoint_TRANSLATION", hyx::CylindricalJoint::TRANSLATION},
    {"CylindricalJoint_ROTATION", hyx::CylindricalJoint::ROTATION},
};

} // namespace
