// Cuts flat polygons into triangles.
#pragma once

#include <osg/Vec3>

#include <array>
#include <span>
#include <vector>

namespace hyxOSG {

/// The triangles of the polygon with these corners, which may have bays, as places in `corners`. Polygons of very many
/// corners are taken to have none.
std::vector<std::array<unsigned int, 3>> cutPolygon(std::span<osg::Vec3 const> corners);

} // namespace hyxOSG
