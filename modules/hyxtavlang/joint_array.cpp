// Rows of the joints of a model.
#include "platform/hyxtavlang/joint_array.h"

#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

using hyxtavlang::JointArray;

template <void (JointArray::*set)(hyx::RealVector const&)>
void set_joints(JointArray& joints, PyObject* numbers) {
    (joints.*set)(vocabulary::read_list<hyx::RealVector>(numbers));
}

constexpr Declared joint_array_rows[] = {
    FUNCTION(JointArray_getNumJoints, METHOD(JointArray, getNumJoints, () const)),
    FUNCTION(JointArray_getNames, METHOD(JointArray, getNames, () const)),
    FUNCTION(JointArray_getPositions, METHOD(JointArray, getPositions, () const)),
    FUNCTION(JointArray_setPositions,
             CONTAINER(ADAPTER(JointArray, setPositions, set_joints<&JointArray::setPositions>, (PyObject*)))),
    FUNCTION(JointArray_getVelocities, METHOD(JointArray, getVelocities, () const)),
    FUNCTION(JointArray_setVelocities,
             CONTAINER(ADAPTER(JointArray, setVelocities, set_joints<&JointArray::setVelocities>, (PyObject*)))),
    FUNCTION(JointArray_getEfforts, METHOD(JointArray, getEfforts, () const)),
    FUNCTION(JointArray_setEfforts,
             CONTAINER(ADAPTER(JointArray, setEfforts, set_joints<&JointArray::setEfforts>, (PyObject*)))),
    FUNCTION(JointArray_getTargets, METHOD(JointArray, getTargets, () const)),
    FUNCTION(JointArray_setTargets,
             CONTAINER(ADAPTER(JointArray, setTargets, set_joints<&JointArray::setTargets>, (PyObject*)))),
    FUNCTION(JointArray_getLowerLimits, METHOD(JointArray, getLowerLimits, () const)),
    FUNCTION(JointArray_getUpperLimits, METHOD(JointArray, getUpperLimits, () const)),
    FUNCTION(delete_JointArray, DELETE(JointArray)),
    REGISTER(hyxtavlang::JointArray, JointArray),
    INIT(JointArray),
};

} // namespace

ROWS(joint_array_rows);
