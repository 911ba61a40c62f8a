// Rays against shapes that need no search.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <LinearMath/btVector3.h>

#include <optional>

namespace hyxCollide {

/// Where a ray enters a shape: as a share of its way, with the outward direction there.
struct RayEntry {
    double fraction;
    btVector3 normal;
};

/// Balls and boxes have closed solutions; bullet's search takes ten times as long, and is not exact.
inline bool hasExactRay(Shape const& shape) {
    return shape.getType() == Shape::SPHERE || shape.getType() == Shape::BOX;
}

/// From one point to another, in the shape's coordinates. A ray that starts inside enters nowhere.
std::optional<RayEntry> castExactRay(Shape const& shape, btVector3 const& from, btVector3 const& to);

} // namespace hyxCollide
