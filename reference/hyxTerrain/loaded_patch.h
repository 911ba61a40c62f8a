// The ground that a body presses on.
#pragma once

#include "platform/hyx/values/vec3.h"

#include <utility>
#include <vector>

namespace hyxTerrain {

/// The smallest convex patch around contact points, and a margin: what is pressed does not depend on how finely the
/// ground is divided.
class LoadedPatch {
public:
    /// In metres, seen from above.
    explicit LoadedPatch(std::vector<hyx::Vec3> places);

    hyx::Real area() const;
    std::pair<hyx::Vec3, hyx::Vec3> bound() const;
    /// Whether an element of this size and centre belongs to the patch.
    bool covers(hyx::Vec3 const& center, hyx::Real elementSize) const;

private:
    /// Anticlockwise.
    std::vector<hyx::Vec3> m_corners;
};

} // namespace hyxTerrain
