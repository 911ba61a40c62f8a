// Distance and direction from a point to the surface of a shape.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxCollide/shape.h"

namespace hyx {

/// The point of a shape's surface nearest to `position` (shape coordinates); false when it is farther than `reach`
/// metres. Fills distance and normal of `surface`, not the velocity. Meshes are taken as sheets without an inside. The
/// edges of boxes are rounded off to the radius `rounding`, at most half of the thickness.
bool findNearestSurface(hyxCollide::Shape const& shape, Vec3 const& position, Real reach,
                        ParticleObstacle::Surface& surface, Real rounding = 0);

} // namespace hyx
