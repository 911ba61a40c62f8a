// How every fragment program of the library works out what light makes of a surface.
#pragma once

#include <osg/Shader>

namespace hyxOSG::decorator {

/// Links these functions into a program, which must link `shadowLookupShader` as well; places and directions are in eye
/// coordinates, directions of length one.
/// - `vec3 mattColor(vec3 place, vec3 normal, vec3 color)`: a surface without a highlight;
/// - `vec3 litColor(vec3 place, vec3 normal, vec3 ambient, vec3 diffuse, vec3 texel, vec3 shine, vec2 metalRoughness,
///   vec3 glow, float open)`: a surface of the current material, with textures' factors on its parts; `open` is the
///   part of the light that reaches it in a baked shadow.
///
/// The surroundings are the defines SHADOW_LIGHT, BLACK_SHADOWS, NO_HIGHLIGHTS, SKY_LIGHT, and of a material
/// METAL_ROUGHNESS.
osg::ref_ptr<osg::Shader> lightEquationShader();

} // namespace hyxOSG::decorator
