// The lights of a model as those of the picture.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxtavlang/model_looks.h"

#include <osg/Group>

#include <vector>

namespace hyxtavlang {

/// A light and where it is: in a body, or where that is null in the world.
struct BuiltLight {
    tavlang::Visuals::Light given;
    hyx::ref_ptr<hyx::RigidBody> body;
    hyx::Vec3 position;
    hyx::Vec3 direction;
};

/// How many lights a picture has.
inline constexpr std::size_t mostLights = 3;

/// Lets the scene be lit by the lights, at most `mostLights`, instead of as many of its own, as long as the group is in
/// it and no other model's lights are. The scene begins where a decorator stands above the group.
void shine(osg::Group& group, std::vector<BuiltLight> const& lights);

} // namespace hyxtavlang
