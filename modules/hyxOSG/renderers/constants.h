// The enumerators of the renderers classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/renderers/force_arrow_renderer.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"

namespace modules {

inline constexpr runtime::Constant scalar_color_map_constants[] = {
    {"ScalarColorMap_RAINBOW", hyxOSG::ScalarColorMap::RAINBOW},
    {"ScalarColorMap_COOLWARM", hyxOSG::ScalarColorMap::COOLWARM},
    {"ScalarColorMap_VIRIDIS", hyxOSG::ScalarColorMap::VIRIDIS},
    {"ScalarColorMap_INFERNO", hyxOSG::ScalarColorMap::INFERNO},
    {"ScalarColorMap_PLASMA", hyxOSG::ScalarColorMap::PLASMA},
    {"ScalarColorMap_GRAYSCALE", hyxOSG::ScalarColorMap::GRAYSCALE},
    {"ScalarColorMap_BLUE_WHITE_RED", hyxOSG::ScalarColorMap::BLUE_WHITE_RED},
    {"ScalarColorMap_CIVIDIS", hyxOSG::ScalarColorMap::CIVIDIS},
    {"ScalarColorMap_BONE", hyxOSG::ScalarColorMap::BONE},
    {"ScalarColorMap_COPPER", hyxOSG::ScalarColorMap::COPPER},
    {"ScalarColorMap_AFMHOT", hyxOSG::ScalarColorMap::AFMHOT},
};

inline constexpr runtime::Constant force_arrow_renderer_constants[] = {
    {"ForceArrowRenderer_MOTOR1D", hyxOSG::ForceArrowRenderer::MOTOR1D},
    {"ForceArrowRenderer_RANGE1D", hyxOSG::ForceArrowRenderer::RANGE1D},
    {"ForceArrowRenderer_LOCK1D", hyxOSG::ForceArrowRenderer::LOCK1D},
    {"ForceArrowRenderer_ALL", hyxOSG::ForceArrowRenderer::ALL},
    {"ForceArrowRenderer_DEFAULT", hyxOSG::ForceArrowRenderer::DEFAULT},
};

inline constexpr runtime::Constant terrain_voxel_renderer_constants[] = {
    {"TerrainVoxelRenderer_DEPTH", hyxOSG::TerrainVoxelRenderer::DEPTH},
    {"TerrainVoxelRenderer_COMPACTION", hyxOSG::TerrainVoxelRenderer::COMPACTION},
};

} // namespace modules
