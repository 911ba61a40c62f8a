// Writes one direction of a joint into the solver's arrays.
#include "reference/machinery/bullet/constraint_row.h"

#include <algorithm>

namespace hyx {

namespace {

void put(btVector3 const& value, btScalar* to) {
    std::copy_n(&value.m_floats[0], 3, to);
}

} // namespace

// Bullet branches on the type only where it writes files; any plain one will do.
ConstraintRow::ConstraintRow(btRigidBody& first, btRigidBody& second, Constraint::RowType type)
    : btTypedConstraint(FIXED_CONSTRAINT_TYPE, first, second), type(type) {
    // Rows are cheap next to contacts, and joints show every error: they go on when the contacts are done.
    setOverrideNumSolverIterations(40);
}

void ConstraintRow::getInfo1(btConstraintInfo1* info) {
    info->m_numConstraintRows = active ? 1 : 0;
    info->nub = 0;
}

void ConstraintRow::getInfo2(btConstraintInfo2* info) {
    if (type == Constraint::TRANSLATIONAL) {
        put(axis, info->m_J1linearAxis);
        put(-axis, info->m_J2linearAxis);
        put((anchors[0] - getRigidBodyA().getCenterOfMassPosition()).cross(axis), info->m_J1angularAxis);
        put(-(anchors[1] - getRigidBodyB().getCenterOfMassPosition()).cross(axis), info->m_J2angularAxis);
    } else {
        put(axis, info->m_J1angularAxis);
        put(-axis, info->m_J2angularAxis);
    }
    info->m_constraintError[0] = targetSpeed;
    info->cfm[0] = softness;
    info->m_lowerLimit[0] = lowerImpulse;
    info->m_upperLimit[0] = upperImpulse;
}

} // namespace hyx
