// What all joints have.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared constraint_rows[] = {
    FUNCTION(delete_Constraint, DELETE(hyx::Constraint)),
    FUNCTION(Constraint_getBodyAt, SHARED(METHOD(hyx::Constraint, getBodyAt, (hyx::UInt) const))),
    FUNCTION(Constraint_getNumBodies, METHOD(hyx::Constraint, getNumBodies, () const)),
    FUNCTION(Constraint_getAttachmentTransform, METHOD(hyx::Constraint, getAttachmentTransform, (hyx::UInt) const)),
    FUNCTION(Constraint_getAttachmentFrame, SHARED(METHOD(hyx::Constraint, getAttachmentFrame, (hyx::UInt) const))),
    FUNCTION(Constraint_setEnable, METHOD(hyx::Constraint, setEnable, (bool))),
    FUNCTION(Constraint_isEnabled, METHOD(hyx::Constraint, isEnabled, () const)),
    FUNCTION(Constraint_setCompliance, METHOD(hyx::Constraint, setCompliance, (hyx::Real))),
    FUNCTION(Constraint_getCompliance, METHOD(hyx::Constraint, getCompliance, () const)),
    FUNCTION(Constraint_setDamping, METHOD(hyx::Constraint, setDamping, (hyx::Real))),
    FUNCTION(Constraint_getDamping, METHOD(hyx::Constraint, getDamping, () const)),
    FUNCTION(Constraint_setForceRange,
             CONTAINER(METHOD(hyx::Constraint, setForceRange, (hyx::Real, hyx::Real, hyx::UInt)))),
    FUNCTION(Constraint_getNumRows, METHOD(hyx::Constraint, getNumRows, () const)),
    FUNCTION(Constraint_getRowType, CONTAINER(METHOD(hyx::Constraint, getRowType, (hyx::UInt) const))),
    FUNCTION(Constraint_getRowAxis, CONTAINER(METHOD(hyx::Constraint, getRowAxis, (hyx::UInt) const))),
    FUNCTION(Constraint_getRowForce, CONTAINER(METHOD(hyx::Constraint, getRowForce, (hyx::UInt) const))),
    FUNCTION(Constraint_getLastForce, METHOD(hyx::Constraint, getLastForce, (hyx::UInt, hyx::Vec3&, hyx::Vec3&) const)),
    FUNCTION(Constraint_getSimulation, SHARED(METHOD(hyx::Constraint, getSimulation, () const))),
    REGISTER(hyx::Constraint, Constraint),
    INIT(Constraint),
    FUNCTION(delete_Constraint1DOF, DELETE(hyx::Constraint1DOF)),
    FUNCTION(Constraint1DOF_getAngle, METHOD(hyx::Constraint1DOF, getAngle, () const)),
    FUNCTION(Constraint1DOF_getCurrentSpeed, METHOD(hyx::Constraint1DOF, getCurrentSpeed, () const)),
    FUNCTION(Constraint1DOF_setFriction, METHOD(hyx::Constraint1DOF, setFriction, (hyx::Real))),
    FUNCTION(Constraint1DOF_getFriction, METHOD(hyx::Constraint1DOF, getFriction, () const)),
    FUNCTION(Constraint1DOF_setViscosity, METHOD(hyx::Constraint1DOF, setViscosity, (hyx::Real))),
    FUNCTION(Constraint1DOF_getViscosity, METHOD(hyx::Constraint1DOF, getViscosity, () const)),
    FUNCTION(Constraint1DOF_getMotor1D, SHARED(METHOD(hyx::Constraint1DOF, getMotor1D, () const))),
    FUNCTION(Constraint1DOF_getRange1D, SHARED(METHOD(hyx::Constraint1DOF, getRange1D, () const))),
    FUNCTION(Constraint1DOF_getLock1D, SHARED(METHOD(hyx::Constraint1DOF, getLock1D, () const))),
    REGISTER(hyx::Constraint1DOF, Constraint1DOF),
    INIT(Constraint1DOF),
};

} // namespace

ROWS(constraint_rows);
