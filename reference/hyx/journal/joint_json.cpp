// Describes joints by where they are attached, and makes them from that.
#include "reference/hyx/journal/joint_json.h"

#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/cylindrical_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/prismatic.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyx {
namespace {

using nlohmann::json;

struct JointKind {
    char const* name;
    bool (*matches)(Constraint const&);
    ref_ptr<Constraint> (*make)(RigidBody*, Frame*, RigidBody*, Frame*);
};

template <class Joint>
constexpr JointKind jointKind(char const* name) {
    return {name, [](Constraint const& joint) { return dynamic_cast<Joint const*>(&joint) != nullptr; },
            [](RigidBody* first, Frame* firstFrame, RigidBody* second, Frame* secondFrame) -> ref_ptr<Constraint> {
                return new Joint(first, firstFrame, second, secondFrame);
            }};
}

constexpr JointKind jointKinds[] = {jointKind<Hinge>("hinge"), jointKind<Prismatic>("prismatic"),
                                    jointKind<BallJoint>("ball"), jointKind<LockJoint>("lock"),
                                    jointKind<CylindricalJoint>("cylindrical")};

/// JSON has no infinity.
json finite(double number) {
    return std::isfinite(number) ? json(number) : json();
}

double bound(json const& value, double otherwise) {
    return value.is_null() ? otherwise : value.get<double>();
}

json placeOf(RigidBody const* body, RigidBodyPtrVector const& bodies) {
    auto const found = std::ranges::find(bodies, body, [](auto const& other) { return other.get(); });
    return found == bodies.end() ? json() : json(found - bodies.begin());
}

RigidBody* bodyAt(json const& place, RigidBodyPtrVector const& bodies) {
    return place.is_null() ? nullptr : bodies.at(place.get<size_t>()).get();
}

ref_ptr<Frame> frameOf(json const& numbers) {
    auto const local = numbers.get<std::vector<double>>();
    if (local.size() != 16)
        throw std::invalid_argument("a transform has 16 numbers");
    return new Frame(AffineMatrix4x4(local.data()));
}

} // namespace

json describeJoint(Constraint const& joint, RigidBodyPtrVector const& bodies) {
    auto const known = std::ranges::find_if(jointKinds, [&](JointKind const& kind) { return kind.matches(joint); });
    if (known == std::end(jointKinds))
        return nullptr;
    json description = {{"kind", known->name},
                        {"name", std::string(joint.getName())},
                        {"bodies", json::array()},
                        {"frames", json::array()}};
    for (UInt side : {0, 1}) {
        RigidBody const* body = joint.getBodyAt(side);
        json const place = placeOf(body, bodies);
        if (body && place.is_null())
            return nullptr;
        AffineMatrix4x4 const inWorld = joint.getAttachmentTransform(side),
                              local = body ? inWorld * body->getTransform().inverse() : inWorld;
        description["bodies"].push_back(place);
        description["frames"].push_back(std::vector<double>(local.ptr(), local.ptr() + 16));
    }
    auto const* free = dynamic_cast<Constraint1DOF const*>(&joint);
    if (free && free->getRange1D()->isEnabled()) {
        RangeReal const range = free->getRange1D()->getRange();
        description["range"] = {finite(range.lower()), finite(range.upper())};
    }
    return description;
}

ref_ptr<Constraint> makeJoint(json const& description, RigidBodyPtrVector const& bodies) {
    auto const name = description.at("kind").get<std::string>();
    auto const known = std::ranges::find(jointKinds, name, &JointKind::name);
    if (known == std::end(jointKinds))
        throw std::invalid_argument("there is no kind of joint '" + name + "'");
    json const &places = description.at("bodies"), &frames = description.at("frames");
    ref_ptr<Constraint> const joint = known->make(bodyAt(places.at(0), bodies), frameOf(frames.at(0)).get(),
                                                  bodyAt(places.at(1), bodies), frameOf(frames.at(1)).get());
    joint->setName(Name(description.value("name", "")));
    if (auto* free = dynamic_cast<Constraint1DOF*>(joint.get()); free && description.contains("range")) {
        json const& range = description["range"];
        free->getRange1D()->setRange(RangeReal(bound(range.at(0), -INFINITY), bound(range.at(1), INFINITY)));
        free->getRange1D()->setEnable(true);
    }
    return joint;
}

} // namespace hyx
