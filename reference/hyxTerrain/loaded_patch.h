// The ground that a body presses on.
#pragma once

#include "platform/hyx/values/vec3.h"

#include <utility>
#include <vector>

namespace hyxTerrain {

/// The smallest convex patch around points, and a margin where it is narrow: its pressure does not depend on how finely
/// the ground is divided.
class LoadedPatch {
public:
    /// In metres, seen from above.
    explicit LoadedPatch(std::vector<hyx::Vec3> places);

    hyx::Real area() const;
    std::pair<hyx::Vec3, hyx::Vec3> bound() const;
    /// Whether the surface between an element's centre and its neighbours is in the patch, so that the element must go
    /// down for the patch to.
    bool bears(hyx::Vec3 const& center, hyx::Real elementSize) const;

private:
    hyx::Real outline() const;

    /// Anticlockwise.
    std::vector<hyx::Vec3> m_corners;
    /// Metres around the corners.
    hyx::Real m_margin = 0;
};

} // namespace hyxTerrain
