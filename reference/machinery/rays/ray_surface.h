// Meshes and height fields, readied for many rays.
#pragma once

#include "platform/hyxCollide/shape.h"
#include "reference/machinery/rays/box_tree.h"

#include <memory>

namespace hyx {

/// Where a ray meets a shape. The normal may point either way.
struct RayMeeting {
    double distance = 0;
    btVector3 normal{0, 0, 0};
    UInt triangle = ~UInt(0);
};

/// A copy of a surface of triangles in its own coordinates. Both of their sides are met.
class RaySurface {
public:
    virtual ~RaySurface() = default;
    /// Whether the ray meets it before `nearest.distance`; `nearest` then tells where.
    virtual bool meet(Ray const& ray, RayMeeting& nearest) const = 0;
};

/// Null for shapes that are no surfaces of triangles.
std::unique_ptr<RaySurface> makeRaySurface(hyxCollide::Shape const& shape);

} // namespace hyx
