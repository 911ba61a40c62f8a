// Drives, equalities, exclusions and keyframes of MJCF files.
#include "reference/hyxtavlang/mjcf_context.h"

#include <algorithm>
#include <cmath>

namespace hyxtavlang {
namespace {

namespace joints = tavlang::Robotics::Joints;
namespace control = tavlang::Control;

/// The kinds whose force is a gain times the control and a bias of position and speed.
std::shared_ptr<control::Actuator> makeActuator(MjcfEntry const& entry) {
    std::string const kind = entry.kind();
    if (kind == "motor")
        return std::make_shared<control::ForceActuator>();
    if (kind == "position") {
        auto const made = std::make_shared<control::PositionActuator>();
        made->gain = entry.number("kp", 1);
        made->damping = entry.number("kv", 0);
        return made;
    }
    if (kind == "velocity") {
        auto const made = std::make_shared<control::VelocityActuator>();
        made->gain = entry.number("kv", 1);
        return made;
    }
    if (kind != "general" || entry.text("gaintype", "fixed") != "fixed" || entry.text("dyntype", "none") != "none")
        return nullptr;
    std::vector<double> const gains = entry.list("gainprm"), bias = entry.list("biasprm");
    double const gain = gains.empty() ? 1 : gains[0];
    std::string const type = entry.text("biastype", "none");
    auto const part = [&](std::size_t i) { return type == "affine" && i < bias.size() ? bias[i] : 0.0; };
    std::shared_ptr<control::Actuator> made;
    if (type == "affine" && part(0) == 0 && gain > 0 && part(1) == -gain && part(2) <= 0) {
        auto const position = std::make_shared<control::PositionActuator>();
        position->damping = -part(2);
        made = position;
    } else if (type == "affine" && part(0) == 0 && part(1) == 0 && gain > 0 && part(2) == -gain) {
        made = std::make_shared<control::VelocityActuator>();
    } else if (type == "none") {
        made = std::make_shared<control::ForceActuator>();
    }
    if (made)
        made->gain = gain;
    return made;
}

void readBounds(MjcfContext const& context, MjcfEntry const& entry, char const* limited, char const* range,
                double& lower, double& upper) {
    std::vector<double> const ends = entry.numbers(range, 2, 2);
    if (!entry.limited(limited, context.compiler.autolimits && !ends.empty()))
        return;
    if (ends.empty() || !(ends[0] <= ends[1]))
        entry.fail(std::string("needs a \"") + range + "\" from a lower to an upper end");
    lower = ends[0];
    upper = ends[1];
}

std::shared_ptr<tavlang::Physics3D::Body> bodyOf(MjcfContext const& context, MjcfEntry const& entry, char const* key) {
    auto const found = context.bodies.find(entry.text(key, "world"));
    if (found == context.bodies.end())
        entry.fail(std::string("names the body \"") + entry.text(key) + "\", which is not there");
    return found->second;
}

std::shared_ptr<joints::SingleAxisJoint> jointOf(MjcfContext const& context, MjcfEntry const& entry, char const* key) {
    auto const found = context.joints.find(entry.text(key));
    if (found == context.joints.end())
        entry.fail(std::string("names the joint \"") + entry.text(key) + "\", which neither turns nor slides here");
    return found->second;
}

/// The first joint follows the second; without a second it stands still.
void readJointEquality(MjcfContext& context, MjcfEntry const& entry) {
    auto const mimic = std::make_shared<tavlang::Robotics::Mimic>();
    mimic->name = entry.name();
    mimic->line = entry.line();
    mimic->follower = jointOf(context, entry, "joint1");
    std::vector<double> factors = entry.numbers("polycoef", 1, 5);
    factors.resize(5, 0.0);
    if (!entry.has("polycoef"))
        factors[1] = 1;
    std::copy(factors.begin() + 2, factors.end(), mimic->curve.begin());
    mimic->offset = mimic->follower->start + factors[0];
    if (entry.has("joint2")) {
        mimic->leader = jointOf(context, entry, "joint2");
        if (mimic->leader == mimic->follower)
            entry.fail("lets a joint follow itself");
        mimic->multiplier = factors[1];
        mimic->offset -= factors[1] * mimic->leader->start;
    }
    context.tree->children.push_back(mimic);
}

template <class Object>
std::shared_ptr<Object> named(std::map<std::string, std::shared_ptr<Object>> const& all, MjcfEntry const& entry,
                              std::string const& key) {
    auto const found = all.find(entry.text(key.c_str()));
    if (found == all.end())
        entry.fail("names \"" + entry.text(key.c_str()) + "\" as its \"" + key + "\", which is not there");
    return found->second;
}

/// Gives a closing joint its bodies; returns its place in the world, where the bodies stand at the start.
hyx::Vec3 connect(MjcfContext const& context, MjcfEntry const& entry, joints::Joint& joint) {
    if (entry.has("body1")) {
        joint.child = bodyOf(context, entry, "body1");
        joint.parent = bodyOf(context, entry, "body2");
        return joint.child->transform.transformPoint(entry.vector("anchor"));
    }
    auto const first = named(context.sites, entry, "site1"), second = named(context.sites, entry, "site2");
    joint.child = first->body;
    joint.parent = second->body;
    return joint.child->transform.transformPoint(first->transform.getTranslate());
}

void readClosure(MjcfContext& context, MjcfEntry const& entry) {
    std::shared_ptr<joints::Joint> joint;
    if (entry.kind() == "connect")
        joint = std::make_shared<joints::BallJoint>();
    else
        joint = std::make_shared<joints::LockJoint>();
    joint->name = entry.name();
    joint->line = entry.line();
    hyx::Vec3 const place = connect(context, entry, *joint);
    if (joint->parent == joint->child)
        entry.fail("connects a body with itself");
    if (joint->child->fixed)
        std::swap(joint->child, joint->parent);
    if (joint->parent->fixed)
        joint->parent = nullptr;
    joint->anchor = joint->child->transform.inverse().transformPoint(place);
    joint->closesLoop = true;
    context.tree->children.push_back(joint);
}

void readEquality(MjcfContext& context, MjcfElement const& element) {
    MjcfEntry const entry = context.entry(element);
    if (!entry.flag("active", true))
        return;
    if (entry.kind() == "joint")
        readJointEquality(context, entry);
    else if (entry.kind() == "connect" || entry.kind() == "weld")
        readClosure(context, entry);
    else
        return context.remark("<" + entry.kind() + "> of <equality>", entry.file(), entry.line());
    context.remarkRest(entry);
}

/// Without a friction of its own a pair has the greater of the two.
void readPair(MjcfContext& context, MjcfEntry const& entry) {
    auto const pair = std::make_shared<tavlang::Physics3D::CollisionPair>();
    pair->name = entry.name();
    pair->line = entry.line();
    pair->first = named(context.geoms, entry, "geom1");
    pair->second = named(context.geoms, entry, "geom2");
    std::vector<double> const friction = entry.numbers("friction", 1, 5);
    pair->friction =
        friction.empty() ? std::max(pair->first->material->friction, pair->second->material->friction) : friction[0];
    if (!(pair->friction >= 0))
        entry.fail("expected a number from 0 in \"friction\"");
    context.remarkRest(entry);
    context.tree->children.push_back(pair);
}

void readContact(MjcfContext& context, MjcfElement const& element) {
    MjcfEntry const entry = context.entry(element);
    if (entry.kind() == "pair")
        return readPair(context, entry);
    if (entry.kind() != "exclude")
        return context.remark("<" + entry.kind() + "> of <contact>", entry.file(), entry.line());
    auto const exclusion = std::make_shared<tavlang::Physics3D::CollisionExclusion>();
    exclusion->line = entry.line();
    exclusion->first = bodyOf(context, entry, "body1");
    exclusion->second = bodyOf(context, entry, "body2");
    context.tree->children.push_back(exclusion);
}

void readKeyframe(MjcfContext& context, MjcfElement const& element) {
    MjcfEntry const entry(element, {});
    auto const keyframe = std::make_shared<tavlang::Simulation::Keyframe>();
    keyframe->name = entry.name();
    keyframe->line = entry.line();
    keyframe->time = entry.number("time", 0);
    keyframe->positions = entry.list("qpos");
    keyframe->velocities = entry.list("qvel");
    keyframe->controls = entry.list("ctrl");
    context.remarkRest(entry);
    context.tree->children.push_back(keyframe);
}

} // namespace

void readMjcfActuators(MjcfContext& context, MjcfElement const& section) {
    for (MjcfElement const& element : context.document.children(section)) {
        MjcfEntry const entry = context.entry(element);
        std::string const joint = entry.text("joint", entry.text("jointinparent"));
        std::shared_ptr<control::Actuator> const made = makeActuator(entry);
        if (!made || joint.empty()) {
            context.remark("<" + entry.kind() + "> of <actuator>" + (made ? " without a joint" : ""), entry.file(),
                           entry.line());
            continue;
        }
        made->name = entry.name();
        made->line = entry.line();
        if (std::vector<double> const gear = entry.numbers("gear", 1, 6); !gear.empty())
            made->gear = gear[0];
        readBounds(context, entry, "ctrllimited", "ctrlrange", made->lowerControl, made->upperControl);
        readBounds(context, entry, "forcelimited", "forcerange", made->lowerForce, made->upperForce);
        if (!(made->gain >= 0))
            entry.fail("has a negative gain");
        context.remarkRest(entry);
        context.actuators.push_back({made, joint});
    }
}

void connectMjcfActuators(MjcfContext& context) {
    for (MjcfActuator const& actuator : context.actuators) {
        auto const found = context.joints.find(actuator.joint);
        if (found == context.joints.end()) {
            context.remark("an actuator of the joint \"" + actuator.joint + "\", which neither turns nor slides here,",
                           context.document.root().file, actuator.made->line);
            continue;
        }
        actuator.made->joint = found->second;
        context.tree->children.push_back(actuator.made);
    }
}

void readMjcfRelations(MjcfContext& context, MjcfElement const& section) {
    for (MjcfElement const& element : context.document.children(section)) {
        if (section.name() == "equality")
            readEquality(context, element);
        else if (section.name() == "contact")
            readContact(context, element);
        else
            readKeyframe(context, element);
    }
}

} // namespace hyxtavlang
