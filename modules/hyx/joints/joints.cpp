// Rows of each kind of joint.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/cylindrical_joint.h"
#include "platform/hyx/joints/distance_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/prismatic.h"

// Joints with an axis are made from frames, or from a point and an axis of the world.
#define AXIS_JOINT(class_, name_)                                                                                      \
    FUNCTION(new_##name_, NEW(class_, (hyx::RigidBody*, hyx::Frame*, hyx::RigidBody*, hyx::Frame*), nullptr, nullptr), \
             NEW(class_, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::RigidBody*, hyx::RigidBody*), nullptr)),            \
        FUNCTION(delete_##name_, DELETE(class_)), REGISTER(class_, name_), INIT(name_)

namespace {

constexpr Declared joints_rows[] = {
    AXIS_JOINT(hyx::Hinge, Hinge),
    AXIS_JOINT(hyx::Prismatic, Prismatic),
    // Its two vectors are the two points.
    AXIS_JOINT(hyx::DistanceJoint, DistanceJoint),
    AXIS_JOINT(hyx::CylindricalJoint, CylindricalJoint),
    FUNCTION(CylindricalJoint_getAngle, CONTAINER(METHOD(hyx::CylindricalJoint, getAngle, (hyx::UInt) const))),
    FUNCTION(CylindricalJoint_getCurrentSpeed,
             CONTAINER(METHOD(hyx::CylindricalJoint, getCurrentSpeed, (hyx::UInt) const))),
    FUNCTION(CylindricalJoint_getMotor1D,
             SHARED(CONTAINER(METHOD(hyx::CylindricalJoint, getMotor1D, (hyx::UInt) const)))),
    FUNCTION(CylindricalJoint_getRange1D,
             SHARED(CONTAINER(METHOD(hyx::CylindricalJoint, getRange1D, (hyx::UInt) const)))),
    FUNCTION(CylindricalJoint_getLock1D,
             SHARED(CONTAINER(METHOD(hyx::CylindricalJoint, getLock1D, (hyx::UInt) const)))),
    FUNCTION(new_BallJoint,
             NEW(hyx::BallJoint, (hyx::RigidBody*, hyx::Frame*, hyx::RigidBody*, hyx::Frame*), nullptr, nullptr),
             NEW(hyx::BallJoint, (hyx::Vec3 const&, hyx::RigidBody*, hyx::RigidBody*), nullptr)),
    FUNCTION(delete_BallJoint, DELETE(hyx::BallJoint)),
    REGISTER(hyx::BallJoint, BallJoint),
    INIT(BallJoint),
    FUNCTION(new_LockJoint, NEW(hyx::LockJoint, (hyx::RigidBody*, hyx::Frame*, hyx::RigidBody*, hyx::Frame*)),
             NEW(hyx::LockJoint, (hyx::RigidBody*, hyx::RigidBody*), nullptr)),
    FUNCTION(delete_LockJoint, DELETE(hyx::LockJoint)),
    REGISTER(hyx::LockJoint, LockJoint),
    INIT(LockJoint),
};

} // namespace

ROWS(joints_rows);
