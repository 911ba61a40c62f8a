// A constraint goes to Python as the joint that it is.
#pragma once

#include "binding/vocabulary/derived.h"
#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/cylindrical_joint.h"
#include "platform/hyx/joints/distance_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/prismatic.h"

namespace modules {

inline PyObject* to_derived(hyx::Constraint* constraint) {
    return vocabulary::to_first_that_fits<hyx::Hinge, hyx::Prismatic, hyx::LockJoint, hyx::BallJoint,
                                          hyx::DistanceJoint, hyx::CylindricalJoint, hyx::Constraint1DOF>(constraint);
}

inline PyObject* to_derived_list(hyx::ConstraintPtrVector const& constraints) {
    return vocabulary::to_derived_list(constraints, [](hyx::Constraint* constraint) { return to_derived(constraint); });
}

} // namespace modules
