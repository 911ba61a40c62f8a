// Rows of the bodies.
#include "platform/hyx/bodies/rigid_body.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/frame.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxSDK/simulation.h"

namespace {

PyObject* geometries(hyx::RigidBody const& self) {
    return vocabulary::to_shared_list(self.getGeometries());
}

constexpr Declared rigid_body_rows[] = {
    FUNCTION(new_RigidBody, NEW(hyx::RigidBody, (hyx::Name const&), hyx::Name()),
             NEW(hyx::RigidBody, (hyxCollide::Geometry*, hyx::Name const&), hyx::Name())),
    FUNCTION(delete_RigidBody, DELETE(hyx::RigidBody)),
    FUNCTION(RigidBody_add, METHOD(hyx::RigidBody, add, (hyxCollide::Geometry*)),
             METHOD(hyx::RigidBody, add, (hyxCollide::Geometry*, hyx::AffineMatrix4x4 const&))),
    FUNCTION(RigidBody_remove, METHOD(hyx::RigidBody, remove, (hyxCollide::Geometry*))),
    FUNCTION(RigidBody_getGeometries, ADAPTER(hyx::RigidBody, getGeometries, geometries, () const)),
    FUNCTION(RigidBody_setPosition, METHOD(hyx::RigidBody, setPosition, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_getPosition, METHOD(hyx::RigidBody, getPosition, () const)),
    FUNCTION(RigidBody_setRotation, METHOD(hyx::RigidBody, setRotation, (hyx::Quat const&))),
    FUNCTION(RigidBody_getRotation, METHOD(hyx::RigidBody, getRotation, () const)),
    FUNCTION(RigidBody_setTransform, METHOD(hyx::RigidBody, setTransform, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(RigidBody_getTransform, METHOD(hyx::RigidBody, getTransform, () const)),
    FUNCTION(RigidBody_getFrame, SHARED(METHOD(hyx::RigidBody, getFrame, () const))),
    FUNCTION(RigidBody_setVelocity, METHOD(hyx::RigidBody, setVelocity, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_getVelocity, METHOD(hyx::RigidBody, getVelocity, () const)),
    FUNCTION(RigidBody_setAngularVelocity, METHOD(hyx::RigidBody, setAngularVelocity, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_getAngularVelocity, METHOD(hyx::RigidBody, getAngularVelocity, () const)),
    FUNCTION(RigidBody_getPointVelocity, METHOD(hyx::RigidBody, getPointVelocity, (hyx::Vec3 const&) const)),
    FUNCTION(RigidBody_setMotionControl, METHOD(hyx::RigidBody, setMotionControl, (hyx::RigidBody::MotionControl))),
    FUNCTION(RigidBody_getMotionControl, METHOD(hyx::RigidBody, getMotionControl, () const)),
    FUNCTION(RigidBody_setEnable, METHOD(hyx::RigidBody, setEnable, (bool))),
    FUNCTION(RigidBody_isEnabled, METHOD(hyx::RigidBody, isEnabled, () const)),
    FUNCTION(RigidBody_setMass, METHOD(hyx::RigidBody, setMass, (hyx::Real))),
    FUNCTION(RigidBody_getMass, METHOD(hyx::RigidBody, getMass, () const)),
    FUNCTION(RigidBody_setInertia,
             METHOD(hyx::RigidBody, setInertia, (hyx::Vec3 const&, hyx::Vec3 const&), hyx::Vec3())),
    FUNCTION(RigidBody_getInertia, METHOD(hyx::RigidBody, getInertia, () const)),
    FUNCTION(RigidBody_getProductsOfInertia, METHOD(hyx::RigidBody, getProductsOfInertia, () const)),
    FUNCTION(RigidBody_setCenterOfMass, METHOD(hyx::RigidBody, setCenterOfMass, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_getCenterOfMass, METHOD(hyx::RigidBody, getCenterOfMass, () const)),
    FUNCTION(RigidBody_getWorldCenterOfMass, METHOD(hyx::RigidBody, getWorldCenterOfMass, () const)),
    FUNCTION(RigidBody_updateMassProperties, METHOD(hyx::RigidBody, updateMassProperties, ())),
    FUNCTION(RigidBody_addForce, METHOD(hyx::RigidBody, addForce, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_addForceAtPosition,
             METHOD(hyx::RigidBody, addForceAtPosition, (hyx::Vec3 const&, hyx::Vec3 const&))),
    FUNCTION(RigidBody_addTorque, METHOD(hyx::RigidBody, addTorque, (hyx::Vec3 const&))),
    FUNCTION(RigidBody_getForce, METHOD(hyx::RigidBody, getForce, () const)),
    FUNCTION(RigidBody_getTorque, METHOD(hyx::RigidBody, getTorque, () const)),
    FUNCTION(RigidBody_setLinearDamping, METHOD(hyx::RigidBody, setLinearDamping, (hyx::Real))),
    FUNCTION(RigidBody_getLinearDamping, METHOD(hyx::RigidBody, getLinearDamping, () const)),
    FUNCTION(RigidBody_setAngularDamping, METHOD(hyx::RigidBody, setAngularDamping, (hyx::Real))),
    FUNCTION(RigidBody_getAngularDamping, METHOD(hyx::RigidBody, getAngularDamping, () const)),
    FUNCTION(RigidBody_getKineticEnergy, METHOD(hyx::RigidBody, getKineticEnergy, () const)),
    FUNCTION(RigidBody_getSimulation, SHARED(METHOD(hyx::RigidBody, getSimulation, () const))),
    REGISTER(hyx::RigidBody, RigidBody),
    INIT(RigidBody),
};

} // namespace

ROWS(rigid_body_rows);
