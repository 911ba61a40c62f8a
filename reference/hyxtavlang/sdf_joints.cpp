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

/// Of versions from 1.10 on, whose elements the library keeps as they are.
void readMimic(SdfContext& context, sdf::Joint const& joint, char const* axisName, std::string const& prefix,
               JointPtr const& follower) {
    sdf::ElementPtr const element = joint.Element();
    sdf::ElementPtr const axis = element && element->HasElement(axisName) ? element->GetElement(axisName) : nullptr;
    auto const single = std::dynamic_pointer_cast<joints::SingleAxisJoint>(follower);
    if (!single || !axis || !axis->HasElement("mimic"))
        return;
    sdf::ElementPtr const given = axis->GetElement("mimic");
    if (!given->HasAttribute("joint"))
        context.fail(element, "the joint '" + joint.Name() + "' follows none, expected \"joint\" in <mimic>");
    auto const mimic = std::make_shared<tavlang::Robotics::Mimic>();
    mimic->line = SdfContext::lineOf(element); // the copied element has none
    mimic->follower = single;
    mimic->multiplier = SdfContext::number(given, {"multiplier"}, 1);
    mimic->offset =
        SdfContext::number(given, {"offset"}, 0) - mimic->multiplier * SdfContext::number(given, {"reference"}, 0);
    context.mimics.push_back({mimic, prefix + given->GetAttribute("joint")->GetAsString(), element});
}

} // namespace

void connectSdfMimics(SdfContext& context) {
    for (SdfMimic const& mimic : context.mimics) {
        for (auto const& part : context.tree->children)
            if (auto const joint = std::dynamic_pointer_cast<joints::SingleAxisJoint>(part);
                joint && joint->name == mimic.leader && joint != mimic.made->follower)
                mimic.made->leader = joint;
        if (!mimic.made->leader)
            context.fail(mimic.element, "the joint '" + mimic.made->follower->name + "' cannot follow '" +
                                            mimic.leader + "', expected another one that turns or slides");
        context.tree->children.push_back(mimic.made);
    }
}

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
        bool const second = made->name.ends_with("/2");
        readMimic(context, joint, second ? "axis2" : "axis", prefix, made);
    }
    context.remarkRest(joint.Element(), {"parent", "child", "pose", "axis", "axis2", "sensor"});
    for (uint64_t i = 0; i < joint.SensorCount(); ++i)
        context.remark("<sensor> of <joint>", joint.SensorByIndex(i)->Element());
}

} // namespace hyxtavlang
