// Rows of the geometries.
#include "platform/hyxCollide/geometry.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "modules/hyxCollide/derived_shape.h"
#include "platform/hyx/bodies/material.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"

namespace {

PyObject* shape(hyxCollide::Geometry const& self) {
    return modules::to_derived(self.getShape());
}

constexpr Declared geometry_rows[] = {
    FUNCTION(new_Geometry, NEW(hyxCollide::Geometry, (hyxCollide::Shape*, hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Geometry, DELETE(hyxCollide::Geometry)),
    FUNCTION(Geometry_getShape, ADAPTER(hyxCollide::Geometry, getShape, shape, () const)),
    FUNCTION(Geometry_setShape, METHOD(hyxCollide::Geometry, setShape, (hyxCollide::Shape*))),
    FUNCTION(Geometry_setLocalTransform,
             METHOD(hyxCollide::Geometry, setLocalTransform, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(Geometry_getLocalTransform, METHOD(hyxCollide::Geometry, getLocalTransform, () const)),
    FUNCTION(Geometry_setLocalPosition, METHOD(hyxCollide::Geometry, setLocalPosition, (hyx::Vec3 const&))),
    FUNCTION(Geometry_getLocalPosition, METHOD(hyxCollide::Geometry, getLocalPosition, () const)),
    FUNCTION(Geometry_setLocalRotation, METHOD(hyxCollide::Geometry, setLocalRotation, (hyx::Quat const&))),
    FUNCTION(Geometry_getLocalRotation, METHOD(hyxCollide::Geometry, getLocalRotation, () const)),
    FUNCTION(Geometry_getTransform, METHOD(hyxCollide::Geometry, getTransform, () const)),
    FUNCTION(Geometry_getPosition, METHOD(hyxCollide::Geometry, getPosition, () const)),
    FUNCTION(Geometry_getRotation, METHOD(hyxCollide::Geometry, getRotation, () const)),
    FUNCTION(Geometry_getRigidBody, SHARED(METHOD(hyxCollide::Geometry, getRigidBody, () const))),
    FUNCTION(Geometry_getSimulation, SHARED(METHOD(hyxCollide::Geometry, getSimulation, () const))),
    FUNCTION(Geometry_setMaterial, METHOD(hyxCollide::Geometry, setMaterial, (hyx::Material*))),
    FUNCTION(Geometry_getMaterial, SHARED(METHOD(hyxCollide::Geometry, getMaterial, () const))),
    FUNCTION(Geometry_setEnableCollisions, METHOD(hyxCollide::Geometry, setEnableCollisions, (bool)),
             METHOD(hyxCollide::Geometry, setEnableCollisions, (hyxCollide::Geometry*, bool))),
    FUNCTION(Geometry_getEnableCollisions, METHOD(hyxCollide::Geometry, getEnableCollisions, () const),
             METHOD(hyxCollide::Geometry, getEnableCollisions, (hyxCollide::Geometry const*) const)),
    FUNCTION(Geometry_setSensor, METHOD(hyxCollide::Geometry, setSensor, (bool))),
    FUNCTION(Geometry_isSensor, METHOD(hyxCollide::Geometry, isSensor, () const)),
    FUNCTION(Geometry_getBound, METHOD(hyxCollide::Geometry, getBound, (hyx::Vec3&, hyx::Vec3&) const)),
    REGISTER(hyxCollide::Geometry, Geometry),
    INIT(Geometry),
};

} // namespace

ROWS(geometry_rows);
