// A constraint goes to Python as the joint that it is.
#pragma once

#include "siblings/python_values.h"

#include "platform/hyx/ball_joint.h"
#include "platform/hyx/cylindrical_joint.h"
#include "platform/hyx/distance_joint.h"
#include "platform/hyx/hinge.h"
#include "platform/hyx/lock_joint.h"
#include "platform/hyx/prismatic.h"

namespace siblings {

template <class First, class... Rest> PyObject *to_first_that_fits(hyx::Constraint *constraint)
{
    if (auto *joint = dynamic_cast<First *>(constraint))
        return to_shared(joint);
    if constexpr (sizeof...(Rest) > 0)
        return to_first_that_fits<Rest...>(constraint);
    else
        return to_shared(constraint);
}

inline PyObject *to_derived(hyx::Constraint *constraint)
{
    return to_first_that_fits<hyx::Hinge, hyx::Prismatic, hyx::LockJoint, hyx::BallJoint, hyx::DistanceJoint, hyx::CylindricalJoint,
                              hyx::Constraint1DOF>(constraint);
}

// A list of such.
inline PyObject *to_derived_list(hyx::ConstraintPtrVector const &constraints)
{
    runtime::Reference const list = runtime::Reference::take(PyList_New(0));
    for (auto const &constraint : constraints) {
        runtime::Reference const item = runtime::Reference::take(to_derived(constraint.get()));
        if (!list.get() || !item.get() || PyList_Append(list.get(), item.get()) < 0)
            throw PythonError();
    }
    return Py_XNewRef(list.get());
}

} // namespace siblings
