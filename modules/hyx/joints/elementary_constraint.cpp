// Motors, ranges and locks of joints.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/range1d.h"

namespace {

constexpr Declared elementary_constraint_rows[] = {
    FUNCTION(ElementaryConstraint_setEnable, METHOD(hyx::ElementaryConstraint, setEnable, (bool))),
    FUNCTION(ElementaryConstraint_isEnabled, METHOD(hyx::ElementaryConstraint, isEnabled, () const)),
    FUNCTION(ElementaryConstraint_setForceRange,
             METHOD(hyx::ElementaryConstraint, setForceRange, (hyx::RangeReal const&))),
    FUNCTION(ElementaryConstraint_getForceRange, METHOD(hyx::ElementaryConstraint, getForceRange, () const)),
    FUNCTION(ElementaryConstraint_setCompliance, METHOD(hyx::ElementaryConstraint, setCompliance, (hyx::Real))),
    FUNCTION(ElementaryConstraint_getCompliance, METHOD(hyx::ElementaryConstraint, getCompliance, () const)),
    FUNCTION(ElementaryConstraint_setDamping, METHOD(hyx::ElementaryConstraint, setDamping, (hyx::Real))),
    FUNCTION(ElementaryConstraint_getDamping, METHOD(hyx::ElementaryConstraint, getDamping, () const)),
    FUNCTION(ElementaryConstraint_getCurrentForce, METHOD(hyx::ElementaryConstraint, getCurrentForce, () const)),
    FUNCTION(delete_ElementaryConstraint, DELETE(hyx::ElementaryConstraint)),
    REGISTER(hyx::ElementaryConstraint, ElementaryConstraint),
    INIT(ElementaryConstraint),
    FUNCTION(delete_Motor1D, DELETE(hyx::Motor1D)),
    FUNCTION(Motor1D_setSpeed, METHOD(hyx::Motor1D, setSpeed, (hyx::Real))),
    FUNCTION(Motor1D_getSpeed, METHOD(hyx::Motor1D, getSpeed, () const)),
    FUNCTION(Motor1D_setMaximumSpeed, METHOD(hyx::Motor1D, setMaximumSpeed, (hyx::Real))),
    FUNCTION(Motor1D_getMaximumSpeed, METHOD(hyx::Motor1D, getMaximumSpeed, () const)),
    FUNCTION(Motor1D_getTargetSpeed, METHOD(hyx::Motor1D, getTargetSpeed, () const)),
    REGISTER(hyx::Motor1D, Motor1D),
    INIT(Motor1D),
    FUNCTION(delete_Range1D, DELETE(hyx::Range1D)),
    FUNCTION(Range1D_setRange, METHOD(hyx::Range1D, setRange, (hyx::RangeReal const&))),
    FUNCTION(Range1D_getRange, METHOD(hyx::Range1D, getRange, () const)),
    REGISTER(hyx::Range1D, Range1D),
    INIT(Range1D),
    FUNCTION(delete_Lock1D, DELETE(hyx::Lock1D)),
    FUNCTION(Lock1D_setPosition, METHOD(hyx::Lock1D, setPosition, (hyx::Real))),
    FUNCTION(Lock1D_getPosition, METHOD(hyx::Lock1D, getPosition, () const)),
    REGISTER(hyx::Lock1D, Lock1D),
    INIT(Lock1D),
};

} // namespace

ROWS(elementary_constraint_rows);
