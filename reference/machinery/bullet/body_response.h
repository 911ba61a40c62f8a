// How bodies and what they are joined to give way to pushes.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <vector>

namespace hyx {

/// Of k bodies: six numbers each, the velocity of the centre of mass and the spin, in the world.
struct BodyResponse {
    /// Row-major, 6k by 6k: the speeds that a unit of impulse gives, where the joints have their say.
    std::vector<double> mobility;
    /// m/s2 and rad/s2 by gravity and by the forces that wait for the next step.
    std::vector<double> acceleration;
};

/// In the next step of `timeStep` seconds of the simulations that the bodies are in, as far as their joints say. What
/// sleeps or stands still does not move; a body in no simulation falls by `gravity`.
BodyResponse respond(std::vector<RigidBody*> const& bodies, Vec3 const& gravity, Real timeStep);

} // namespace hyx
