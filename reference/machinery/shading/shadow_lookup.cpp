// The shader's part that reads shadow maps.
#include "reference/machinery/shading/shadow_lookup.h"

#include "reference/machinery/shading/drawing_values.h"

#include <osg/Uniform>

#include <string>

namespace hyxOSG::decorator {
namespace {

char const* const shadowLookup = R"(
#pragma import_defines(CASTER_GRID_DEPTH)
#ifdef SHADOW_MAPS
#ifdef SOFT_SHADOWS
#define MAP sampler2D
#define PENUMBRA(of) of
#else
#define MAP sampler2DShadow
#define PENUMBRA(of) vec2(0.0)
#endif
uniform MAP hyx_shadowMap0;
#if SHADOW_MAPS > 1
uniform MAP hyx_shadowMap1;
uniform MAP hyx_shadowMap2;
uniform float hyx_splitDepth[SHADOW_MAPS];
#endif

struct View { mat4 matrix; float texel; vec2 spread; }; // that a map has of the scene
struct Receiver { vec3 place, normal, right, up; }; // in eye coordinates; to the next pixels

#ifdef SOFT_SHADOWS
uniform sampler2D hyx_casterGrid;

const mat2 goldenTurn = mat2(-0.737369, 0.675490, -0.675490, -0.737369);
const int SEARCHED = 16, FILTERED = 24;

vec2 firstTap()
{
    float angle = 6.2831853 * fract(52.9829189 * fract(dot(gl_FragCoord.xy, vec2(0.06711056, 0.00583715))));
    return vec2(cos(angle), sin(angle));
}

// How the depth of the receiver's own plane changes over the map: taps aside must not take it for a caster.
vec2 depthSlope(mat4 toMap, vec4 place, Receiver at)
{
    vec4 right = toMap * vec4(at.right, 0.0), up = toMap * vec4(at.up, 0.0);
    vec3 r = right.xyz - place.xyz / place.w * right.w, u = up.xyz - place.xyz / place.w * up.w;
    float area = r.x * u.y - r.y * u.x;
    if (area == 0.0)
        return vec2(0.0);
    vec2 slope = vec2(r.z * u.y - u.z * r.y, u.z * r.x - r.z * u.x) / area;
    return slope * min(1.0, 8.0 / max(length(slope), 1e-6));
}

// Of what turns away from the light nothing is seen in it, whatever its shadow.
bool facesLight(Receiver at)
{
    vec4 from = shadowLampPosition;
    return dot(at.normal, from.xyz - at.place * from.w) > 0.0;
}

// Whether it must be looked whether a caster is between the light and a place in the map. Software rasterizers take
// both sides of every branch, so where there is nothing to look for, loops end at once, and what they still look up is
// one and the same texel: to fetch others takes longer than all the rest. Where the rasterizer looks into several maps
// anyway, a grid for each would take longer than it saves.
bool castersNear(vec3 place, Receiver at)
{
#if SHADOW_MAPS > 1
    return facesLight(at);
#else
    return facesLight(at) && place.z >= CASTER_GRID_DEPTH * texture2D(hyx_casterGrid, place.xy).r;
#endif
}

// The lamp is a disc. Taps all over it first find how far the casters are off, then what the half shadow that follows
// from this leaves of the light. Receivers may lie behind the map's last depth.
float lookUp(MAP map, View view, vec4 place, Receiver at)
{
    vec3 p = place.xyz / place.w;
    vec2 slope = depthSlope(view.matrix, place, at);
    vec2 least = vec2(1.25 / shadowMapSize);
    vec2 reach = max(view.spread * p.z, least);
    vec2 turned = firstTap();
    float casters = 0.0, depths = 0.0;
    bool aside = any(greaterThan(abs(p.xy - 0.5), 0.5 + reach)); // of all casters, which the map holds
    int taps = aside || !castersNear(p, at) ? 0 : SEARCHED;
    vec2 middle = taps > 0 ? p.xy : vec2(0.0);
    reach = taps > 0 ? reach : vec2(0.0);
    for (int i = 0; i < taps; ++i) {
        vec2 way = reach * ((float(i) + 0.5) / float(SEARCHED)) * turned; // densest within: near casters are narrow
        float depth = texture2D(map, middle + way).r;
        float nearer = 1.0 - step(min(p.z + dot(slope, way), 1.0), depth);
        casters += nearer;
        depths += nearer * depth;
        turned = goldenTurn * turned;
    }
    taps = casters == 0.0 || casters == float(SEARCHED) ? 0 : FILTERED;
    middle = taps > 0 ? p.xy : vec2(0.0);
    reach = taps > 0 ? max(view.spread * max(p.z - depths / max(casters, 1.0), 0.0), least) : vec2(0.0);
    float open = 0.0;
    for (int i = 0; i < taps; ++i) {
        vec2 way = reach * sqrt((float(i) + 0.5) / float(FILTERED)) * turned;
        open += step(min(p.z + dot(slope, way), 1.0), texture2D(map, middle + way).r);
        turned = goldenTurn * turned;
    }
    return taps > 0 ? open / float(FILTERED) : casters == 0.0 ? 1.0 : 0.0;
}
#else
float lookUp(MAP map, View view, vec4 place, Receiver at) { return shadow2D(map, place.xyz / place.w).r; }
#endif

// Out of the surface, by the size of a texel: a surface must not shade itself. And by a third of a pixel, as round
// shapes may be finer in the map than in the picture, and stand out of what one sees.
float mapVisibility(MAP map, View view, Receiver at)
{
    float pixel = pixelSize.y - pixelSize.x * at.place.z;
    vec4 place = view.matrix * vec4(at.place + at.normal * (1.5 * view.texel + 0.35 * pixel), 1.0);
    return place.w <= 0.0 ? 1.0 : lookUp(map, view, place, at);
}

float shadowVisibility(vec3 eyePosition, vec3 eyeNormal)
{
    if (receivesShadow < 0.5)
        return 1.0;
    Receiver at = Receiver(eyePosition, eyeNormal, dFdx(eyePosition), dFdy(eyePosition));
#if SHADOW_MAPS > 1
    float depth = -eyePosition.z;
    if (depth > hyx_splitDepth[1])
        return mapVisibility(hyx_shadowMap2, View(hyx_shadowMatrix[2], hyx_shadowTexel[2], PENUMBRA(hyx_penumbra[2])), at);
    if (depth > hyx_splitDepth[0])
        return mapVisibility(hyx_shadowMap1, View(hyx_shadowMatrix[1], hyx_shadowTexel[1], PENUMBRA(hyx_penumbra[1])), at);
#endif
    return mapVisibility(hyx_shadowMap0, View(shadowMatrix, shadowTexel, PENUMBRA(penumbra)), at);
}
#else
float shadowVisibility(vec3 eyePosition, vec3 eyeNormal) { return 1.0; }
#endif
)";

} // namespace

osg::ref_ptr<osg::Shader> shadowLookupShader() {
    static osg::ref_ptr<osg::Shader> const shader =
        new osg::Shader(osg::Shader::FRAGMENT, withDrawingValues(shadowLookup));
    return shader;
}

void declareShadowMaps(osg::StateSet& state, ShadingOptions const& options) {
    if (options.shadowMaps == 0)
        return;
    state.setDefine("SHADOW_MAPS", std::to_string(options.shadowMaps));
    state.setDefine("SHADOW_LIGHT", std::to_string(options.shadowLight));
    if (options.softShadows) {
        state.setDefine("SOFT_SHADOWS");
        state.setDefine("CASTER_GRID_DEPTH", std::to_string(CASTER_GRID_DEPTH));
        state.addUniform(new osg::Uniform("hyx_casterGrid", static_cast<int>(CASTER_GRID_UNIT)));
    }
    if (options.blackShadows)
        state.setDefine("BLACK_SHADOWS");
    for (unsigned int map = 0; map < options.shadowMaps; ++map)
        state.addUniform(
            new osg::Uniform(("hyx_shadowMap" + std::to_string(map)).c_str(), static_cast<int>(SHADOW_MAP_UNIT + map)));
}

} // namespace hyxOSG::decorator
