// Rows of the wires.
#include "platform/hyxWire/wire.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace {

PyObject* points(hyxWire::Wire const& self) {
    return vocabulary::to_list(self.getPoints());
}

PyObject* tensions(hyxWire::Wire const& self) {
    return vocabulary::to_list(self.getTensions());
}

constexpr Declared wire_rows[] = {
    FUNCTION(new_Wire, NEW(hyxWire::Wire, (hyx::Real, hyx::Real))),
    FUNCTION(Wire_add, METHOD(hyxWire::Wire, add, (hyx::Vec3 const&)),
             METHOD(hyxWire::Wire, add, (hyx::RigidBody*, hyx::Vec3 const&))),
    FUNCTION(Wire_addObstacle, METHOD(hyxWire::Wire, addObstacle, (hyx::RigidBody*))),
    FUNCTION(Wire_removeObstacle, METHOD(hyxWire::Wire, removeObstacle, (hyx::RigidBody*))),
    FUNCTION(Wire_setFriction, METHOD(hyxWire::Wire, setFriction, (hyx::Real))),
    FUNCTION(Wire_getFriction, METHOD(hyxWire::Wire, getFriction, () const)),
    FUNCTION(Wire_initialize, METHOD(hyxWire::Wire, initialize, ())),
    FUNCTION(Wire_isInitialized, METHOD(hyxWire::Wire, isInitialized, () const)),
    FUNCTION(Wire_getRadius, METHOD(hyxWire::Wire, getRadius, () const)),
    FUNCTION(Wire_setMassPerLength, METHOD(hyxWire::Wire, setMassPerLength, (hyx::Real))),
    FUNCTION(Wire_getMassPerLength, METHOD(hyxWire::Wire, getMassPerLength, () const)),
    FUNCTION(Wire_setAxialStiffness, METHOD(hyxWire::Wire, setAxialStiffness, (hyx::Real))),
    FUNCTION(Wire_getAxialStiffness, METHOD(hyxWire::Wire, getAxialStiffness, () const)),
    FUNCTION(Wire_setDamping, METHOD(hyxWire::Wire, setDamping, (hyx::Real))),
    FUNCTION(Wire_getDamping, METHOD(hyxWire::Wire, getDamping, () const)),
    FUNCTION(Wire_setGravity, METHOD(hyxWire::Wire, setGravity, (hyx::Vec3 const&))),
    FUNCTION(Wire_getGravity, METHOD(hyxWire::Wire, getGravity, () const)),
    FUNCTION(Wire_setNumSubsteps, METHOD(hyxWire::Wire, setNumSubsteps, (hyx::UInt))),
    FUNCTION(Wire_getNumSubsteps, METHOD(hyxWire::Wire, getNumSubsteps, () const)),
    FUNCTION(Wire_setWinchSpeed, METHOD(hyxWire::Wire, setWinchSpeed, (hyx::Real))),
    FUNCTION(Wire_getWinchSpeed, METHOD(hyxWire::Wire, getWinchSpeed, () const)),
    FUNCTION(Wire_getRestLength, METHOD(hyxWire::Wire, getRestLength, () const)),
    FUNCTION(Wire_getCurrentLength, METHOD(hyxWire::Wire, getCurrentLength, () const)),
    FUNCTION(Wire_getNumPoints, METHOD(hyxWire::Wire, getNumPoints, () const)),
    FUNCTION(Wire_getPoint, METHOD(hyxWire::Wire, getPoint, (hyx::Index) const)),
    FUNCTION(Wire_getPoints, ADAPTER(hyxWire::Wire, getPoints, points, () const)),
    FUNCTION(Wire_getTension, METHOD(hyxWire::Wire, getTension, (hyx::Index) const)),
    FUNCTION(Wire_getTensions, ADAPTER(hyxWire::Wire, getTensions, tensions, () const)),
    FUNCTION(Wire_getMaximumTension, METHOD(hyxWire::Wire, getMaximumTension, () const)),
    FUNCTION(Wire_getRevision, METHOD(hyxWire::Wire, getRevision, () const)),
    FUNCTION(Wire_step, METHOD(hyxWire::Wire, step, (hyx::Real))),
    FUNCTION(delete_Wire, DELETE(hyxWire::Wire)),
    REGISTER(hyxWire::Wire, Wire),
    INIT(Wire),
};

} // namespace

ROWS(wire_rows);
