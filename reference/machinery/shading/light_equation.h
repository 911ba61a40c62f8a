// How every fragment program of the library works out what a light gives.
#pragma once

#include <osg/Shader>

namespace hyxOSG::decorator {

/// Links two functions into a program; places and directions are in eye coordinates, directions of length one.
/// - `vec4 lightIncidence(int light, vec3 place)`: the direction to one of `gl_LightSource` and, in w, what distance
/// and
///   spot leave of its brightness;
/// - `float lightShine(vec3 normal, vec3 toLight, vec3 toEye)`: the part of a light that the material mirrors.
osg::ref_ptr<osg::Shader> lightEquationShader();

} // namespace hyxOSG::decorator
