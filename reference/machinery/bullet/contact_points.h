// Points of contact, each of its own.
#pragma once

#include <BulletCollision/CollisionDispatch/btManifoldResult.h>

namespace hyx {

/// How near surfaces are that may touch, in metres, for the smaller of two radii; less for small bodies.
double usualReach(double radius);

/// Adds a point as `result` itself does, but merges it only with a very near one: bullet takes points for one that are
/// nearer to each other than surfaces may be that touch, and before fast bodies that is far.
void addPoint(btManifoldResult& result, btVector3 const& normal, btVector3 const& point, double distance);

} // namespace hyx
