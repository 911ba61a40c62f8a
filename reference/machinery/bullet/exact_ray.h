// Rays against shapes that need no search.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <LinearMath/btVector3.h>

#include <optional>

namespace hyxCollide {

class Trimesh;

/// Where a ray enters a shape: as a share of its way, with the outward direction there.
struct RayEntry {
    double fraction;
    btVector3 normal;
    hyx::UInt triangle = ~hyx::UInt(0);
};

/// Whether the shape has a closed solution; bullet's search takes ten times as long, and errs by metres at worst.
bool hasExactRay(Shape const& shape);

/// From one point to another, in the shape's coordinates. A ray that starts inside enters nowhere.
std::optional<RayEntry> castExactRay(Shape const& shape, btVector3 const& from, btVector3 const& to);

/// The same for a mesh that is closed and convex.
std::optional<RayEntry> castConvexMeshRay(Trimesh const& mesh, btVector3 const& from, btVector3 const& to);

} // namespace hyxCollide
