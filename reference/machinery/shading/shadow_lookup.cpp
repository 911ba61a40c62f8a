// The shader's part that reads shadow maps.
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/Uniform>

#include <string>

namespace hyxOSG::decorator {
namespace {

char const* const shadowLookup = R"(#version 120
#pragma import_defines(SHADOW_MAPS, SOFT_SHADOWS)
#ifdef SHADOW_MAPS
uniform bool hyx_receivesShadow;
uniform sampler2DShadow hyx_shadowMap0;
uniform mat4 hyx_shadowMatrix[SHADOW_MAPS];
uniform float hyx_shadowTexel[SHADOW_MAPS];
uniform float hyx_shadowMapSize;
#if SHADOW_MAPS > 1
uniform sampler2DShadow hyx_shadowMap1;
uniform sampler2DShadow hyx_shadowMap2;
uniform float hyx_splitDepth[SHADOW_MAPS];
#endif

float lookUp(sampler2DShadow map, vec4 place)
{
    if (place.w <= 0.0)
        return 1.0;
    vec3 p = place.xyz / place.w;
#ifdef SOFT_SHADOWS
    float d = 0.75 / hyx_shadowMapSize;
    return 0.25 * (shadow2D(map, p + vec3(-d, -d, 0.0)).r + shadow2D(map, p + vec3(d, -d, 0.0)).r +
                   shadow2D(map, p + vec3(-d, d, 0.0)).r + shadow2D(map, p + vec3(d, d, 0.0)).r);
#else
    return shadow2D(map, p).r;
#endif
}

// Half way out of the surface, by the size of a texel: a surface must not shade itself.
vec4 shadowPlace(int map, vec3 eyePosition, vec3 eyeNormal)
{
    return hyx_shadowMatrix[map] * vec4(eyePosition + eyeNormal * (1.5 * hyx_shadowTexel[map]), 1.0);
}

float shadowVisibility(vec3 eyePosition, vec3 eyeNormal)
{
    if (!hyx_receivesShadow)
        return 1.0;
#if SHADOW_MAPS > 1
    float depth = -eyePosition.z;
    if (depth > hyx_splitDepth[1])
        return lookUp(hyx_shadowMap2, shadowPlace(2, eyePosition, eyeNormal));
    if (depth > hyx_splitDepth[0])
        return lookUp(hyx_shadowMap1, shadowPlace(1, eyePosition, eyeNormal));
#endif
    return lookUp(hyx_shadowMap0, shadowPlace(0, eyePosition, eyeNormal));
}
#else
float shadowVisibility(vec3 eyePosition, vec3 eyeNormal) { return 1.0; }
#endif
)";

} // namespace

osg::ref_ptr<osg::Shader> shadowLookupShader() {
    static osg::ref_ptr<osg::Shader> const shader = new osg::Shader(osg::Shader::FRAGMENT, shadowLookup);
    return shader;
}

void declareShadowMaps(osg::StateSet& state, ShadingOptions const& options) {
    if (options.shadowMaps == 0)
        return;
    state.setDefine("SHADOW_MAPS", std::to_string(options.shadowMaps));
    state.setDefine("SHADOW_LIGHT", std::to_string(options.shadowLight));
    if (options.softShadows)
        state.setDefine("SOFT_SHADOWS");
    if (options.blackShadows)
        state.setDefine("BLACK_SHADOWS");
    for (unsigned int map = 0; map < options.shadowMaps; ++map)
        state.addUniform(
            new osg::Uniform(("hyx_shadowMap" + std::to_string(map)).c_str(), static_cast<int>(SHADOW_MAP_UNIT + map)));
}

} // namespace hyxOSG::decorator
