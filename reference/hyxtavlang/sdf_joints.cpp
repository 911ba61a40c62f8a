// Joints of SDF files.
#include "reference/hyxtavlang/sdf_context.h"

#include <cmath>

namespace hyxtavlang {
namespace {

namespace joints = tavlang::Robotics::Joints;
using JointPtr = std::shared_ptr<joints::Joint>;

/// The frame of the joint is in the child; `sense` is -1 where child and parent have changed places.
template <class Kind>
JointPtr makeSingle(SdfContext const& context, sdf::Joint const& joint, hyx::AffineMatrix4x4 const& frame, double sense,
                    unsigned index) {
    auto const made = std::make_shared<Kind>();
    sdf::JointAxis const* const axis = joint.Axis(index);
    if (!axis)
        context.fail(joint.Element(), "the joint '" + joint.Name() + "' has no <axis>, expected one");
    ignition::math::Vector3d direction;
    context.check(axis->ResolveXyz(direction));
    made->axis = frame.transformVector(SdfContext::vector(direction)).normal() * sense;
    constexpr double endless = 1e15; // the format says "no limit" by greater numbers
    made->hasRange = joint.Type() != sdf::JointType::CONTINUOUS &&
                     (std::abs(axis->Lower()) < endless || std::abs(axis->Upper()) < endless);
    made->lower = axis->Lower();
    made->upper = axis->Upper();
    if (made->hasRange && !(made->lower <= made->upper))
        context.fail(joint.Element(), "the joint '" + joint.Name() + "' has a lower limit above its upper one");
    if (axis->Effort() >= 0 && axis->Effort() < endless)
        made->maximumEffort = axis->Effort();
    if (axis->MaxVelocity() >= 0 && axis->MaxVelocity() < endless)
        made->maximumSpeed = axis->MaxVelocity();
    made->damping = axis->Damping();
    made->friction = axis->Friction();
    made->stiffness = axis->SpringStiffness();
    made->restPosition = axis->SpringReference();
    return made;
}

std::vector<JointPtr> makeJoints(SdfContext& context, sdf::Joint const& joint, hyx::AffineMatrix4x4 const& frame,
                                 double sense) {
    auto const hinge = [&](unsigned index) {
        return makeSingle<joints::HingeJoint>(context, joint, frame, sense, index);
    };
    switch (joint.Type()) {
    case sdf::JointType::FIXED:
        return {std::make_shared<joints::LockJoint>()};
    case sdf::JointType::BALL:
        return {std::make_shared<joints::BallJoint>()};
    case sdf::JointType::REVOLUTE:
    case sdf::JointType::CONTINUOUS:
        return {hinge(0)};
    case sdf::JointType::PRISMATIC:
        return {makeSingle<joints::PrismaticJoint>(context, joint, frame, sense, 0)};
    case sdf::JointType::UNIVERSAL:
    case sdf::JointType::REVOLUTE2: {
        JointPtr const second = hinge(1);
        second->name = "/2";
        return {hinge(0), second};
    }
    default:
        context.remark("a joint of the type screw or gearbox", joint.Element());
        return {std::make_shared<joints::FreeJoint>()};
    }
}

SdfContext::BodyPtr linkOf(SdfContext const& context, std::string const& name, std::string const& prefix,
                           sdf::Joint const& joint) {
    if (name == "world")
        return nullptr;
    auto const found = context.bodies.find(prefix + name);
    if (found == context.bodies.end())
        context.fail(joint.Element(),
                     "the joint '" + joint.Name() + "' names the link '" + name + "', which is not there");
    return found->second;
}

} // namespace

void readSdfJoint(SdfContext& context, sdf::Joint const& joint, std::string const& prefix) {
    std::string parentName, childName;
    context.check(joint.ResolveParentLink(parentName));
    context.check(joint.ResolveChildLink(childName));
    bool const swapped = childName == "world"; // what stands still is the parent here
    if (swapped)
        std::swap(parentName, childName);
    SdfContext::BodyPtr const parent = linkOf(context, parentName, prefix, joint),
                              child = linkOf(context, childName, prefix, joint);
    if (!child || parent == child)
        context.fail(joint.Element(), "the joint '" + joint.Name() + "' connects no two links");
    hyx::AffineMatrix4x4 const frame = context.place(joint.SemanticPose(), childName);
    bool const closes = !context.held.insert(child.get()).second;
    for (JointPtr const& made : makeJoints(context, joint, frame, swapped ? -1 : 1)) {
        made->name = prefix + joint.Name() + made->name;
        made->line = SdfContext::lineOf(joint.Element());
        made->parent = parent;
        made->child = child;
        made->anchor = frame.getTranslate();
        made->closesLoop = closes;
        context.tree->children.push_back(made);
    }
    context.remarkRest(joint.Element(), {"parent", "child", "pose", "axis", "axis2", "sensor"});
    for (uint64_t i = 0; i < joint.SensorCount(); ++i)
        context.remark("<sensor> of <joint>", joint.SensorByIndex(i)->Element());
}

} // namespace hyxtavlang
