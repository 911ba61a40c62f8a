// A constraint goes to Python as the joint that it is.
#pragma once

#include "siblings/derived.h"

#include "platform/hyx/ball_joint.h"
#include "platform/hyx/cylindrical_joint.h"
#include "platform/hyx/distance_joint.h"
#include "platform/hyx/hinge.h"
#include "platform/hyx/lock_joint.h"
#include "platform/hyx/prismatic.h"

namespace siblings {

inline PyObject *to_derived(hyx::Constraint *constraint)
{
    return to_first_that_fits<hyx::Hinge, hyx::Prismatic, hyx::LockJoint, hyx::BallJoint, hyx::DistanceJoint, hyx::CylindricalJoint,
                              hyx::Constraint1DOF>(constraint);
}

inline PyObject *to_derived_list(hyx::ConstraintPtrVector const &constraints)
{
    return to_derived_list(constraints, [](hyx::Constraint *constraint) { return to_derived(constraint); });
}

} // namespace siblings
