// What a blade meets in the ground.
#pragma once

#include "platform/hyxTerrain/dig_tool.h"
#include "reference/hyxTerrain/columns.h"

#include <vector>

namespace hyxTerrain {

/// A column that a blade is in, and the height above which the blade takes its soil.
struct Cut {
    std::size_t column;
    hyx::Real height; ///< metres above the terrain's origin
};

/// The columns that a blade is in or passes within `timeStep` seconds. Places are in metres in the terrain.
std::vector<Cut> findCuts(Columns const& columns, DigTool const& tool, hyx::Vec3 const& terrainPosition,
                          hyx::Real timeStep);

/// The force in newtons on the edge of a blade that goes at `velocity` through soil which `gravity` in m/s2 pulls down:
/// passive earth pressure of what stands ahead of it, over its width across its way.
hyx::Vec3 soilForce(Columns const& columns, DigTool const& tool, hyx::Vec3 const& terrainPosition,
                    hyx::Vec3 const& velocity, hyx::Real gravity);

} // namespace hyxTerrain
