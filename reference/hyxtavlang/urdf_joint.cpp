// Turns the joints of a robot description into constraints.
#include "reference/hyxtavlang/urdf_joint.h"

#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/prismatic.h"
#include "reference/hyx/joints/planar_joint.h"

#include <stdexcept>

namespace hyxtavlang {
namespace {

hyx::ref_ptr<hyx::Constraint> complete(hyx::ref_ptr<hyx::Constraint1DOF> constraint, urdf::Joint const& joint) {
    if (joint.dynamics) {
        constraint->setViscosity(joint.dynamics->damping);
        constraint->setFriction(joint.dynamics->friction);
    }
    if (!joint.limits)
        return constraint;
    if (joint.type != urdf::Joint::CONTINUOUS && joint.limits->lower <= joint.limits->upper) {
        constraint->getRange1D()->setRange(hyx::RangeReal(joint.limits->lower, joint.limits->upper));
        constraint->getRange1D()->setEnable(true);
    }
    if (joint.limits->effort > 0)
        constraint->getMotor1D()->setForceRange(hyx::RangeReal(joint.limits->effort));
    return constraint;
}

} // namespace

hyx::ref_ptr<hyx::Constraint> makeJoint(urdf::Joint const& joint, hyx::RigidBody* parent, hyx::RigidBody* child) {
    hyx::AffineMatrix4x4 const frame = child->getTransform();
    hyx::Vec3 const place = frame.getTranslate();
    hyx::Vec3 const axis = frame.transformVector(hyx::Vec3(joint.axis.x, joint.axis.y, joint.axis.z));
    switch (joint.type) { // the child comes first: positions count its motion against the parent
    case urdf::Joint::REVOLUTE:
    case urdf::Joint::CONTINUOUS:
        return complete(new hyx::Hinge(place, axis, child, parent), joint);
    case urdf::Joint::PRISMATIC:
        return complete(new hyx::Prismatic(place, axis, child, parent), joint);
    case urdf::Joint::PLANAR:
        return new hyx::PlanarJoint(place, axis, child, parent);
    case urdf::Joint::FLOATING:
        return nullptr;
    default:
        throw std::runtime_error("the joint '" + joint.name + "' is of an unknown type");
    }
}

} // namespace hyxtavlang
