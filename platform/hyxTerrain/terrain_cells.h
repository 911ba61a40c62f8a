// Soil as cells of one size.
#pragma once

#include "platform/hyxTerrain/terrain.h"

#include <vector>

namespace hyxTerrain {

/// The layers of a column, from the rock up, cut into cells of `height` metres. A layer's mass goes to its cells in
/// proportion; in a cell of several layers masses add up, compaction and velocity are means by mass, and the material
/// is that with most of it. Cells above the soil are left out, and so are empty ones. The masses of all cells of a
/// column are those of its layers. Throws `std::invalid_argument` unless the height is positive and leaves at most a
/// million cells.
std::vector<Voxel> cellsOf(Terrain const& terrain, hyx::UInt x, hyx::UInt y, hyx::Real height);

} // namespace hyxTerrain
