// The integer constants of _hyxOSG: enumerators and masks, named by class and enumerator.
#pragma once

#include "runtime/integer_constants.h"

namespace module {

using runtime::Constant;

// In the order in which they are installed.
constexpr Constant constants[] = {
    // Module
    {"SWIG_MODULE_hyxOSG", 1},
    // Text
    {"Text_XY_PLANE", 0},
    {"Text_REVERSED_XY_PLANE", 1},
    {"Text_XZ_PLANE", 2},
    {"Text_REVERSED_XZ_PLANE", 3},
    {"Text_YZ_PLANE", 4},
    {"Text_REVERSED_YZ_PLANE", 5},
    {"Text_SCREEN", 6},
    {"Text_USER_DEFINED_ROTATION", 7},
    {"Text_DROP_SHADOW_BOTTOM_RIGHT", 0},
    {"Text_DROP_SHADOW_CENTER_RIGHT", 1},
    {"Text_DROP_SHADOW_TOP_RIGHT", 2},
    {"Text_DROP_SHADOW_BOTTOM_CENTER", 3},
    {"Text_DROP_SHADOW_TOP_CENTER", 4},
    {"Text_DROP_SHADOW_BOTTOM_LEFT", 5},
    {"Text_DROP_SHADOW_CENTER_LEFT", 6},
    {"Text_DROP_SHADOW_TOP_LEFT", 7},
    {"Text_OUTLINE", 8},
    {"Text_NONE", 9},
    {"Text_LEFT_TOP", 0},
    {"Text_LEFT_CENTER", 1},
    {"Text_LEFT_BOTTOM", 2},
    {"Text_CENTER_TOP", 3},
    {"Text_CENTER_CENTER", 4},
    {"Text_CENTER_BOTTOM", 5},
    {"Text_RIGHT_TOP", 6},
    {"Text_RIGHT_CENTER", 7},
    {"Text_RIGHT_BOTTOM", 8},
    {"Text_LEFT_BASE_LINE", 9},
    {"Text_CENTER_BASE_LINE", 10},
    {"Text_RIGHT_BASE_LINE", 11},
    {"Text_LEFT_BOTTOM_BASE_LINE", 12},
    {"Text_CENTER_BOTTOM_BASE_LINE", 13},
    {"Text_RIGHT_BOTTOM_BASE_LINE", 14},
    {"Text_BASE_LINE", 9},
    {"Text_TEXT", 1},
    {"Text_BOUNDINGBOX", 2},
    {"Text_FILLEDBOUNDINGBOX", 4},
    {"Text_ALIGNMENT", 8},
    // GeometryNode
    {"GeometryNode_RENDER_DATA", 1},
    {"GeometryNode_GEOMETRY_DATA", 2},
    // SceneDecorator
    {"SceneDecorator_UPPER_LEFT", 1},
    {"SceneDecorator_LOWER_LEFT", 2},
    {"SceneDecorator_UPPER_RIGHT", 3},
    {"SceneDecorator_LOWER_RIGHT", 4},
    {"SceneDecorator_FREE", 5},
    {"SceneDecorator_LIGHT0", 1},
    {"SceneDecorator_LIGHT1", 2},
    {"SceneDecorator_LIGHT2", 4},
    {"SceneDecorator_ALL", 7},
    {"SceneDecorator_SOFT_SHADOWMAP", 0},
    {"SceneDecorator_SHADOWMAP", 1},
    {"SceneDecorator_SHADOWVOLUME", 2},
    {"SceneDecorator_PARALLELLSPLIT_SHADOWMAP", 3},
    {"SceneDecorator_LIGHTSPACEPERSPECTIVE_SHADOWMAP", 4},
    {"SceneDecorator_SHADOWTEXTURE", 5},
    {"SceneDecorator_NO_SHADOWS", 6},
    // RenderTarget
    {"RenderTarget_COLOR_BUFFER", 3},
    {"RenderTarget_DEPTH_BUFFER", 0},
    {"RenderTarget_RGBA", 6408},
    {"RenderTarget_RGB", 6407},
    {"RenderTarget_DEPTH_COMPONENT", 6402},
    {"RenderTarget_DO_NOT_COMPUTE_NEAR_FAR", 0},
    {"RenderTarget_COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES", 1},
    {"RenderTarget_COMPUTE_NEAR_FAR_USING_PRIMITIVES", 2},
    {"RenderTarget_COMPUTE_NEAR_USING_PRIMITIVES", 3},
    // ScalarColorMap
    {"ScalarColorMap_RAINBOW", 0},
    {"ScalarColorMap_COOLWARM", 1},
    {"ScalarColorMap_VIRIDIS", 2},
    {"ScalarColorMap_INFERNO", 3},
    {"ScalarColorMap_PLASMA", 4},
    {"ScalarColorMap_GRAYSCALE", 5},
    {"ScalarColorMap_BLUE_WHITE_RED", 6},
    {"ScalarColorMap_CIVIDIS", 7},
    {"ScalarColorMap_BONE", 8},
    {"ScalarColorMap_COPPER", 9},
    {"ScalarColorMap_AFMHOT", 10},
    // VideoFFMPEGPipeCapture
    {"VideoFFMPEGPipeCapture_OutputCodec_H264", 0},
    {"VideoFFMPEGPipeCapture_OutputCodec_H264RGB", 1},
    {"VideoFFMPEGPipeCapture_OutputCodec_XVID", 2},
};

// In the order in which they are installed, behind "cvar".
constexpr Constant constants_after_cvar[] = {
    // ParticleSystemDrawable
    {"ParticleSystemDrawable_SPRITES", 0},
    {"ParticleSystemDrawable_QUAD_SPRITES", 1},
    {"ParticleSystemDrawable_TRIANGLES", 2},
    {"ParticleSystemDrawable_SIMPLE_SPRITES", 0},
    {"ParticleSystemDrawable_ROTATION_SPRITES", 1},
    {"ParticleSystemDrawable_ALPHA_SPRITES", 2},
    // Texture units
    {"DIFFUSE_TEXTURE", 0},
    {"SHADOW_TEXTURE", 1},
    {"SHADOW_JITTER_TEXTURE", 2},
    {"NORMALMAP_TEXTURE", 3},
    {"HEIGHTMAP_TEXTURE", 4},
    {"SPECULARMAP_TEXTURE", 5},
    {"SPHEREMAP_TEXTURE", 6},
    // ForceArrowRenderer
    {"ForceArrowRenderer_MOTOR1D", 1},
    {"ForceArrowRenderer_RANGE1D", 2},
    {"ForceArrowRenderer_LOCK1D", 4},
    {"ForceArrowRenderer_ALL", 7},
    {"ForceArrowRenderer_DEFAULT", 1},
    // TerrainVoxelRenderer
    {"TerrainVoxelRenderer_DEPTH", 0},
    {"TerrainVoxelRenderer_COMPACTION", 1},
};

// In the order in which they are installed, behind the container key.
constexpr Constant constants_after_container_key[] = {
    // EmbeddedGLWindow
    {"EmbeddedGLWindow_MAIN_SCENE_MASK", 2},
    {"EmbeddedGLWindow_DEBUG_RENDER_MASK", 4},
    {"EmbeddedGLWindow_OSG_RENDER_MASK", 8},
    {"EmbeddedGLWindow_HUD_MASK", 16},
    {"EmbeddedGLWindow_DECORATOR_MASK", 32},
    // ExampleApplication
    {"ExampleApplication_MAIN_SCENE_MASK", 2},
    {"ExampleApplication_DEBUG_RENDER_MASK", 4},
    {"ExampleApplication_OSG_RENDER_MASK", 8},
    {"ExampleApplication_HUD_MASK", 16},
    {"ExampleApplication_DECORATOR_MASK", 32},
    {"ExampleApplication_CASTS_SHADOWS_MASK", 64},
    {"ExampleApplication_RECIEVES_SHADOWS_MASK", 128},
    {"ExampleApplication_MULTI", 0},
    {"ExampleApplication_ITERATIVE", 1},
    {"ExampleApplication_NUM_SOLVERS", 2},
};

} // namespace module
