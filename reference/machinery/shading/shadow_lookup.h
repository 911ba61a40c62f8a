// How fragment programs ask what a shadow map leaves of the light: the decorator's own program, those of textured
// surfaces and those of particles.
#pragma once

#include "reference/machinery/shading/shading_program.h"

#include <osg/Shader>

namespace hyxOSG::decorator {

/// Links `float shadowVisibility(vec3 eyePosition, vec3 eyeNormal)` into a program: 0 in the shadow to 1 out of it, and
/// 1 where no maps are declared. The program may import the defines SHADOW_LIGHT, the index of the light that throws
/// the shadows, and BLACK_SHADOWS; both are absent without shadows.
osg::ref_ptr<osg::Shader> shadowLookupShader();

/// Tells the programs below a state set which maps there are.
void declareShadowMaps(osg::StateSet& state, ShadingOptions const& options);

} // namespace hyxOSG::decorator
