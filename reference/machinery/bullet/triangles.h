// Triangles of a surface, and whether it goes on beyond their edges.
#pragma once

#include <BulletCollision/CollisionShapes/btConcaveShape.h>

namespace hyx {

/// The point of a triangle that is nearest to another point.
btVector3 nearestOfTriangle(btVector3 const& point, btVector3 const* corners);

/// Whether the straight way between two points meets a surface, from either side.
bool crosses(btConcaveShape const& surface, btVector3 const& from, btVector3 const& to);

/// Whether a surface rises at a point towards the side to which a normal leans, or goes on as flat: then what touches
/// an edge or a corner of one triangle there meets another triangle first. `near` is how exactly the point is known,
/// and `leaning` the sine of an angle, how exactly the normal. All in the coordinates of the surface.
bool goesOn(btConcaveShape const& surface, btVector3 const& point, btVector3 const& normal, double near,
            double leaning);

} // namespace hyx
