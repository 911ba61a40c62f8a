// Turns joints of a model tree into constraints.
#include "reference/hyxtavlang/joint_builder.h"

#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/prismatic.h"
#include "reference/hyx/joints/planar_joint.h"

#include <cmath>

namespace hyxtavlang {
namespace {

namespace joints = tavlang::Robotics::Joints;

hyx::ref_ptr<hyx::Constraint> complete(hyx::ref_ptr<hyx::Constraint1DOF> constraint,
                                       joints::SingleAxisJoint const& joint) {
    constraint->setViscosity(joint.damping);
    constraint->setFriction(joint.friction);
    if (joint.hasRange) {
        constraint->getRange1D()->setRange(hyx::RangeReal(joint.lower - joint.start, joint.upper - joint.start));
        constraint->getRange1D()->setEnable(true);
    }
    if (std::isfinite(joint.maximumEffort))
        constraint->getMotor1D()->setForceRange(hyx::RangeReal(joint.maximumEffort));
    constraint->getMotor1D()->setMaximumSpeed(joint.maximumSpeed);
    if (joint.speed) {
        constraint->getMotor1D()->setSpeed(*joint.speed);
        constraint->getMotor1D()->setEnable(true);
    }
    return constraint;
}

} // namespace

hyx::ref_ptr<hyx::Constraint> makeJoint(joints::Joint const& joint, hyx::AffineMatrix4x4 const& frame,
                                        hyx::RigidBody* parent, hyx::RigidBody* child) {
    hyx::Vec3 const place = frame.transformPoint(joint.anchor);
    hyx::Vec3 const axis = frame.transformVector(joint.axis);
    // The child comes first: positions count its motion against the parent.
    if (auto const* hinge = dynamic_cast<joints::HingeJoint const*>(&joint))
        return complete(new hyx::Hinge(place, axis, child, parent), *hinge);
    if (auto const* prismatic = dynamic_cast<joints::PrismaticJoint const*>(&joint))
        return complete(new hyx::Prismatic(place, axis, child, parent), *prismatic);
    if (dynamic_cast<joints::BallJoint const*>(&joint))
        return new hyx::BallJoint(place, child, parent);
    if (dynamic_cast<joints::PlanarJoint const*>(&joint))
        return new hyx::PlanarJoint(place, axis, child, parent);
    if (dynamic_cast<joints::LockJoint const*>(&joint) && joint.closesLoop)
        return new hyx::LockJoint(child, parent);
    return nullptr;
}

} // namespace hyxtavlang
