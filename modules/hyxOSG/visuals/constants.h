// The enumerators of the visuals classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/visuals/texture_mode.h"

namespace modules {

inline constexpr runtime::Constant texture_unit_constants[] = {
    {"DIFFUSE_TEXTURE", hyxOSG::DIFFUSE_TEXTURE},
    {"SHADOW_TEXTURE", hyxOSG::SHADOW_TEXTURE},
    {"SHADOW_JITTER_TEXTURE", hyxOSG::SHADOW_JITTER_TEXTURE},
    {"NORMALMAP_TEXTURE", hyxOSG::NORMALMAP_TEXTURE},
    {"HEIGHTMAP_TEXTURE", hyxOSG::HEIGHTMAP_TEXTURE},
    {"SPECULARMAP_TEXTURE", hyxOSG::SPECULARMAP_TEXTURE},
    {"SPHEREMAP_TEXTURE", hyxOSG::SPHEREMAP_TEXTURE},
};

} // namespace modules
