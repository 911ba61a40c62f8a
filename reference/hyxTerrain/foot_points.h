// Where a geometry's corners meet the ground.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxTerrain/terrain.h"

#include <vector>

namespace hyxTerrain {

/// The corners of boxes and meshes, and points on the rims of standing cylinders and cones, that are in the ground or
/// nearly; in metres, world. Contacts are fewer, and depend on how the ground is divided.
std::vector<hyx::Vec3> findFootPoints(hyxCollide::Geometry const& geometry, Terrain const& terrain);

} // namespace hyxTerrain
