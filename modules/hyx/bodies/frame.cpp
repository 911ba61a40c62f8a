// Rows of the coordinate systems.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/observer_frame.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace {

constexpr Declared frame_rows[] = {
    FUNCTION(new_Frame, NEW(hyx::Frame, ()), NEW(hyx::Frame, (hyx::AffineMatrix4x4 const&, hyx::Frame*), nullptr)),
    FUNCTION(delete_Frame, DELETE(hyx::Frame)),
    FUNCTION(Frame_setParent, METHOD(hyx::Frame, setParent, (hyx::Frame*))),
    FUNCTION(Frame_getParent, SHARED(METHOD(hyx::Frame, getParent, () const))),
    FUNCTION(Frame_setLocalMatrix, METHOD(hyx::Frame, setLocalMatrix, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(Frame_getLocalMatrix, METHOD(hyx::Frame, getLocalMatrix, () const)),
    FUNCTION(Frame_setLocalTranslate, METHOD(hyx::Frame, setLocalTranslate, (hyx::Vec3 const&))),
    FUNCTION(Frame_getLocalTranslate, METHOD(hyx::Frame, getLocalTranslate, () const)),
    FUNCTION(Frame_setLocalRotate, METHOD(hyx::Frame, setLocalRotate, (hyx::Quat const&))),
    FUNCTION(Frame_getLocalRotate, METHOD(hyx::Frame, getLocalRotate, () const)),
    FUNCTION(Frame_getMatrix, METHOD(hyx::Frame, getMatrix, () const)),
    FUNCTION(Frame_getTranslate, METHOD(hyx::Frame, getTranslate, () const)),
    FUNCTION(Frame_getRotate, METHOD(hyx::Frame, getRotate, () const)),
    FUNCTION(Frame_transformPointToWorld, METHOD(hyx::Frame, transformPointToWorld, (hyx::Vec3 const&) const)),
    FUNCTION(Frame_transformPointToLocal, METHOD(hyx::Frame, transformPointToLocal, (hyx::Vec3 const&) const)),
    REGISTER(hyx::Frame, Frame),
    INIT(Frame),
    FUNCTION(new_ObserverFrame, NEW(hyx::ObserverFrame, ()),
             NEW(hyx::ObserverFrame, (hyx::RigidBody*, hyx::AffineMatrix4x4 const&), hyx::AffineMatrix4x4()),
             NEW(hyx::ObserverFrame, (hyx::Name const&, hyx::RigidBody*, hyx::AffineMatrix4x4 const&),
                 hyx::AffineMatrix4x4())),
    FUNCTION(delete_ObserverFrame, DELETE(hyx::ObserverFrame)),
    FUNCTION(ObserverFrame_attachTo, METHOD(hyx::ObserverFrame, attachTo, (hyx::RigidBody*))),
    FUNCTION(ObserverFrame_getRigidBody, SHARED(METHOD(hyx::ObserverFrame, getRigidBody, () const))),
    FUNCTION(ObserverFrame_getPosition, METHOD(hyx::ObserverFrame, getPosition, () const)),
    FUNCTION(ObserverFrame_getRotation, METHOD(hyx::ObserverFrame, getRotation, () const)),
    FUNCTION(ObserverFrame_getVelocity, METHOD(hyx::ObserverFrame, getVelocity, () const)),
    FUNCTION(ObserverFrame_getAngularVelocity, METHOD(hyx::ObserverFrame, getAngularVelocity, () const)),
    REGISTER(hyx::ObserverFrame, ObserverFrame),
    INIT(ObserverFrame),
};

} // namespace

ROWS(frame_rows);
