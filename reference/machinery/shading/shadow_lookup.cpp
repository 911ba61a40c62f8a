// The shader's part that reads shadow maps.
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/Uniform>

#include <string>

namespace hyxOSG::decorator {
namespace {

char const* const shadowLookup = R"(#version 120
#pragma import_defines(SHADOW_MAPS, SOFT_SHADOWS, SPREADING_SHADOWS)
#if defined(SHADOW_MAPS) && defined(SPREADING_SHADOWS)
uniform bool hyx_receivesShadow;
uniform sampler2D hyx_shadowMap0;
uniform mat4 hyx_shadowMatrix[SHADOW_MAPS];
uniform float hyx_shadowTexel[SHADOW_MAPS];
uniform float hyx_shadowMapSize;
uniform vec4 hyx_shadowDepth;  // (x d + y) / (z d + w) is the distance from the light of depth d
uniform vec3 hyx_shadowSpread; // on the map, from the middle of a soft edge to its end: in x and y for a spread of 1,
                               // and at most, in x
uniform float hyx_lightIsNear; // 1 for a light at a place, 0 for one of parallel rays

const int SEARCHES = 8, TAPS = 20;

// Places spread evenly over a disc.
vec2 discPlace(int i, int count)
{
    float turn = 2.39996 * float(i);
    return sqrt((float(i) + 0.5) / float(count)) * vec2(cos(turn), sin(turn));
}

float distanceOf(float depth)
{
    return (depth * hyx_shadowDepth.x + hyx_shadowDepth.y) / (depth * hyx_shadowDepth.z + hyx_shadowDepth.w);
}

vec3 onMap(vec3 eyePosition)
{
    vec4 place = hyx_shadowMatrix[0] * vec4(eyePosition, 1.0);
    return place.w > 0.0 ? place.xyz / place.w : vec3(-1.0);
}

// How the depth of a plane grows in x and y of the map.
vec2 depthSlope(vec3 place, vec3 eyePosition, vec3 eyeNormal, float size)
{
    vec3 along = normalize(abs(eyeNormal.z) < 0.9 ? cross(eyeNormal, vec3(0.0, 0.0, 1.0)) : cross(eyeNormal, vec3(1.0, 0.0, 0.0)));
    vec3 a = onMap(eyePosition + size * along) - place, b = onMap(eyePosition + size * cross(eyeNormal, along)) - place;
    float area = a.x * b.y - a.y * b.x;
    vec2 slope = vec2(a.z * b.y - b.z * a.y, b.z * a.x - a.z * b.x) / (abs(area) > 1e-12 ? area : 1e-12);
    float steepest = 2.0 * max(abs(a.z), abs(b.z)) / max(length(a.xy), length(b.xy));
    return clamp(slope, -steepest, steepest);
}

// Half shade grows with the distance of what throws it: first the distance is looked for, then so wide an edge is drawn.
float shadowVisibility(vec3 eyePosition, vec3 eyeNormal)
{
    if (!hyx_receivesShadow)
        return 1.0;
    vec3 from = eyePosition + eyeNormal * (1.5 * hyx_shadowTexel[0]);
    vec3 place = onMap(from);
    if (place.x <= 0.0 || place.x >= 1.0 || place.y <= 0.0 || place.y >= 1.0)
        return 1.0;
    vec2 slope = depthSlope(place, from, eyeNormal, 4.0 * hyx_shadowTexel[0]);
    vec2 shape = hyx_shadowSpread.xy / hyx_shadowSpread.x;
    float blocked = 0.0, depths = 0.0;
    for (int i = 0; i < SEARCHES; ++i) {
        vec2 off = hyx_shadowSpread.z * shape * discPlace(i, SEARCHES);
        float depth = texture2D(hyx_shadowMap0, place.xy + off).r;
        if (depth < min(place.z + dot(slope, off), 1.0)) {
            blocked += 1.0;
            depths += depth;
        }
    }
    if (blocked == 0.0)
        return 1.0;
    float receiver = distanceOf(place.z), blocker = distanceOf(depths / blocked);
    float spread = (receiver - blocker) / mix(1.0, max(blocker, 1e-6), hyx_lightIsNear);
    vec2 radius = clamp(spread * hyx_shadowSpread.x, 0.75 / hyx_shadowMapSize, hyx_shadowSpread.z) * shape;
    float lit = 0.0;
    for (int i = 0; i < TAPS; ++i) {
        vec2 off = radius * discPlace(i, TAPS);
        lit += texture2D(hyx_shadowMap0, place.xy + off).r < min(place.z + dot(slope, off), 1.0) ? 0.0 : 1.0;
    }
    return lit / float(TAPS);
}
#elif defined(SHADOW_MAPS)
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
    if (options.spreadingShadows)
        state.setDefine("SPREADING_SHADOWS");
    if (options.blackShadows)
        state.setDefine("BLACK_SHADOWS");
    for (unsigned int map = 0; map < options.shadowMaps; ++map)
        state.addUniform(
            new osg::Uniform(("hyx_shadowMap" + std::to_string(map)).c_str(), static_cast<int>(SHADOW_MAP_UNIT + map)));
}

} // namespace hyxOSG::decorator
