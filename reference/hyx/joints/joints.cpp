// Each kind of joint: which directions it holds, and which are free.
#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/cylindrical_joint.h"
#include "platform/hyx/joints/distance_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/prismatic.h"
#include "reference/hyx/joints/joint_place.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/constraint_implementation.h"

#include <stdexcept>

namespace hyx {

namespace {

constexpr int X = 0;
constexpr int Y = 1;
constexpr int Z = 2;
Vec3 const upwards(0, 0, 1);

AffineMatrix4x4 placeOf(RigidBody const* body) {
    return body ? body->getTransform() : AffineMatrix4x4();
}

} // namespace

Constraint1DOF::Constraint1DOF(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint(body1, frame1, body2, frame2), m_motor(new Motor1D), m_range(new Range1D), m_lock(new Lock1D) {}

Constraint1DOF::~Constraint1DOF() = default;

Real Constraint1DOF::getAngle() const {
    return implementation().position(implementation().free.front());
}

Real Constraint1DOF::getCurrentSpeed() const {
    return implementation().speed(implementation().free.front());
}

void Constraint1DOF::setFriction(Real force) {
    implementation().resist(Implementation::FRICTION, requireNonNegative(force, "the friction of a joint"));
}

Real Constraint1DOF::getFriction() const {
    return implementation().resistance(Implementation::FRICTION);
}

void Constraint1DOF::setViscosity(Real viscosity) {
    implementation().resist(Implementation::VISCOSITY, requireNonNegative(viscosity, "the viscosity of a joint"));
}

Real Constraint1DOF::getViscosity() const {
    return implementation().resistance(Implementation::VISCOSITY);
}

Hinge::Hinge(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint1DOF(body1, frame1, body2, frame2) {
    implementation().hold({X, Y, Z}, {X, Y});
    implementation().leave(Implementation::ABOUT_Z, getMotor1D(), getRange1D(), getLock1D());
}

Hinge::Hinge(Vec3 const& worldPoint, Vec3 const& worldAxis, RigidBody* body1, RigidBody* body2)
    : Hinge(body1, JointPlace(worldPoint, worldAxis).seenFrom(body1), body2,
            JointPlace(worldPoint, worldAxis).seenFrom(body2)) {}

Prismatic::Prismatic(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint1DOF(body1, frame1, body2, frame2) {
    implementation().hold({X, Y}, {X, Y, Z});
    implementation().leave(Implementation::ALONG_Z, getMotor1D(), getRange1D(), getLock1D());
}

Prismatic::Prismatic(Vec3 const& worldPoint, Vec3 const& worldAxis, RigidBody* body1, RigidBody* body2)
    : Prismatic(body1, JointPlace(worldPoint, worldAxis).seenFrom(body1), body2,
                JointPlace(worldPoint, worldAxis).seenFrom(body2)) {}

DistanceJoint::DistanceJoint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint1DOF(body1, frame1, body2, frame2) {
    implementation().leave(Implementation::ALONG_LINE, getMotor1D(), getRange1D(), getLock1D());
    getLock1D()->setPosition(getAngle());
    getLock1D()->setEnable(true);
}

DistanceJoint::DistanceJoint(Vec3 const& worldPoint1, Vec3 const& worldPoint2, RigidBody* body1, RigidBody* body2)
    : DistanceJoint(body1, JointPlace(worldPoint1, upwards).seenFrom(body1), body2,
                    JointPlace(worldPoint2, upwards).seenFrom(body2)) {}

BallJoint::BallJoint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint(body1, frame1, body2, frame2) {
    implementation().hold({X, Y, Z}, {});
}

BallJoint::BallJoint(Vec3 const& worldPoint, RigidBody* body1, RigidBody* body2)
    : BallJoint(body1, JointPlace(worldPoint, upwards).seenFrom(body1), body2,
                JointPlace(worldPoint, upwards).seenFrom(body2)) {}

LockJoint::LockJoint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint(body1, frame1, body2, frame2) {
    implementation().hold({X, Y, Z}, {X, Y, Z});
}

LockJoint::LockJoint(RigidBody* body1, RigidBody* body2)
    : LockJoint(body1, nullptr, body2, ref_ptr<Frame>(new Frame(placeOf(body1) * placeOf(body2).inverse()))) {}

CylindricalJoint::CylindricalJoint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : Constraint(body1, frame1, body2, frame2) {
    implementation().hold({X, Y}, {X, Y});
    for (FreeDirection& direction : m_free)
        direction = {new Motor1D, new Range1D, new Lock1D};
    implementation().leave(Implementation::ALONG_Z, getMotor1D(TRANSLATION), getRange1D(TRANSLATION),
                           getLock1D(TRANSLATION));
    implementation().leave(Implementation::ABOUT_Z, getMotor1D(ROTATION), getRange1D(ROTATION), getLock1D(ROTATION));
}

CylindricalJoint::CylindricalJoint(Vec3 const& worldPoint, Vec3 const& worldAxis, RigidBody* body1, RigidBody* body2)
    : CylindricalJoint(body1, JointPlace(worldPoint, worldAxis).seenFrom(body1), body2,
                       JointPlace(worldPoint, worldAxis).seenFrom(body2)) {}

CylindricalJoint::~CylindricalJoint() = default;

CylindricalJoint::FreeDirection const& CylindricalJoint::direction(UInt dof) const {
    if (dof > ROTATION)
        throw std::out_of_range("a cylindrical joint has the free directions TRANSLATION and ROTATION");
    return m_free[dof];
}

Real CylindricalJoint::getAngle(UInt dof) const {
    direction(dof);
    return implementation().position(implementation().free[dof]);
}

Real CylindricalJoint::getCurrentSpeed(UInt dof) const {
    direction(dof);
    return implementation().speed(implementation().free[dof]);
}

Motor1D* CylindricalJoint::getMotor1D(UInt dof) const {
    return direction(dof).motor.get();
}

Range1D* CylindricalJoint::getRange1D(UInt dof) const {
    return direction(dof).range.get();
}

Lock1D* CylindricalJoint::getLock1D(UInt dof) const {
    return direction(dof).lock.get();
}

} // namespace hyx
