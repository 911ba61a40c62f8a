// The texts of the equation by which every program lights surfaces.
#include "reference/machinery/shading/light_equation.h"

#include "reference/machinery/shading/drawing_values.h"

namespace hyxOSG::decorator {
namespace {

// A material is either one of colours and shininess or, with METAL_ROUGHNESS, one of a metal's share and roughness,
// which also mirrors the sky and the ground. Software rasterizers take both sides of every branch, so what is off is
// left out by defines.
char const* const lightEquationSource = R"(
#pragma import_defines(BLACK_SHADOWS, NO_HIGHLIGHTS, NO_SPOTS)
float shadowVisibility(vec3 eyePosition, vec3 eyeNormal);

struct Lamp { vec4 position; vec3 ambient, diffuse, specular, fading; };

vec4 lightIncidence(int light, Lamp lamp, vec3 place)
{
    vec4 from = lamp.position;
    vec3 way = from.xyz - place * from.w;
    float d = length(way);
    way /= max(d, 1e-6);
    float strength = 1.0;
    if (from.w != 0.0) {
        strength = 1.0 / (lamp.fading.x + d * (lamp.fading.y + d * lamp.fading.z));
#ifndef NO_SPOTS
        if (gl_LightSource[light].spotCutoff < 180.0) {
            float c = dot(-way, normalize(gl_LightSource[light].spotDirection));
            strength *= c < gl_LightSource[light].spotCosCutoff ? 0.0 : pow(c, gl_LightSource[light].spotExponent);
        }
#endif
    }
    return vec4(way, strength);
}

#if defined(SKY_LIGHT) || defined(METAL_ROUGHNESS)
#ifdef METAL_ROUGHNESS
// Mirrored light is added as light adds up, all else as screens show it.
vec3 toLight(vec3 color) { return pow(max(color, 0.0), vec3(2.2)); }
vec3 toScreen(vec3 light) { return pow(max(light, 0.0), vec3(1.0 / 2.2)); }
#else
vec3 toLight(vec3 color) { return color; }
vec3 toScreen(vec3 light) { return light; }
#endif

vec3 skyMix(float upperShare)
{
    return toScreen(mix(toLight(groundColor), toLight(skyColor), upperShare));
}

float rise(vec3 way)
{
    return dot(way, skyward);
}
#endif

#if defined(LIGHT0_OFF) && defined(LIGHT1_OFF) && defined(LIGHT2_OFF)
// Alone the sky gives all light: what is white is as bright as an even sky. 0.3 is the light model's first value.
const float skyShare = 1.0 / 0.3, skyLackShare = 0.0, skyGrey = 0.0;
#else
// Leaves room for the lamps, and half as colourful, for what is purple to be so in the shade as in the light.
const float skyShare = 1.6, skyLackShare = 1.0, skyGrey = 0.5;
#endif

vec3 ambientLight(vec3 normal)
{
#ifdef SKY_LIGHT
#ifdef METAL_ROUGHNESS
    vec3 sky = skyMix(0.5 + 0.5 * rise(normal)); // the irradiance of two even halves
#else
    vec3 sky = skyMix(smoothstep(-1.0, 1.0, rise(normal)));
#endif
    sky = mix(sky, vec3(dot(sky, vec3(0.2126, 0.7152, 0.0722))), skyGrey);
    return skyShare * ambientLightColor * (sky + skyLackShare * skyLack);
#else
    return ambientLightColor;
#endif
}

#ifdef METAL_ROUGHNESS
float highlightStrength(vec3 normal, vec3 toLight, vec3 toEye, float a)
{
    vec3 between = normalize(toLight + toEye);
    float nh = max(dot(normal, between), 0.0), nl = max(dot(normal, toLight), 0.0);
    float nv = max(dot(normal, toEye), 1e-3);
    float spread = nh * nh * (a * a - 1.0) + 1.0;
    float k = 0.5 * a;
    return 0.25 * a * a / (spread * spread * (nl * (1.0 - k) + k) * (nv * (1.0 - k) + k));
}

// How much of even surroundings a surface of the microfacet model mirrors: Lazarov's fit in the form of Karis (2014),
// and what comes out after several bounces, as by Fdez-Aguera (2019): a white mirror sends back all.
vec3 mirrorShare(vec3 mirror, float roughness, float nv)
{
    vec4 r = roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float edge = min(r.x * r.x, exp2(-9.28 * nv)) * r.x + r.y;
    vec3 once = mirror * (r.z - 1.04 * edge) + r.w + 1.04 * edge;
    return clamp(once * (1.0 + mirror * (1.0 / (r.z + r.w) - 1.0)), 0.0, 1.0);
}

// The horizon is blurred by the lobe of the roughness, which has long tails; 1.2 is fitted to prefiltered surroundings.
vec3 mirroredSky(vec3 way, float roughness)
{
    float blur = 1.2 * roughness * roughness + 0.01, up = rise(way);
    return skyMix(0.5 + 0.5 * up / sqrt(up * up + blur * blur));
}
#else
float highlightStrength(vec3 normal, vec3 toLight, vec3 toEye)
{
    // Nearly the power of the cosine, at half its price.
    return exp2(1.442695 * materialShininess * (dot(normal, normalize(toLight + toEye)) - 1.0));
}
#endif

struct Sum { vec3 ambient; vec3 direct; vec3 highlight; };

void addLight(inout Sum sum, int light, Lamp lamp, float lit, vec3 place, vec3 normal, vec3 toEye, float roughness)
{
    vec4 way = lightIncidence(light, lamp, place);
    float slope = max(dot(normal, way.xyz), 0.0);
    sum.ambient += way.w * lamp.ambient;
    sum.direct += way.w * lit * slope * lamp.diffuse;
#ifndef NO_HIGHLIGHTS
#ifdef METAL_ROUGHNESS
    sum.highlight += way.w * lit * slope * lamp.specular *
                     highlightStrength(normal, way.xyz, toEye, roughness * roughness);
#else
    if (slope > 0.0)
        sum.highlight += way.w * lit * lamp.specular * highlightStrength(normal, way.xyz, toEye);
#endif
#endif
}

Sum lightAt(vec3 place, vec3 normal, float open, float roughness)
{
    vec3 toEye = perspective > 0.5 ? -normalize(place) : vec3(0.0, 0.0, 1.0);
    vec3 lit = vec3(open);
#ifdef SHADOW_LIGHT
    lit[SHADOW_LIGHT] *= shadowVisibility(place, normal);
#endif
    Sum sum = Sum(ambientLight(normal), vec3(0.0), vec3(0.0));
#ifndef LIGHT0_OFF
    addLight(sum, 0, Lamp(lampPosition0, lampAmbient0, lampDiffuse0, lampSpecular0, lampFading0), lit[0], place, normal, toEye, roughness);
#endif
#ifndef LIGHT1_OFF
    addLight(sum, 1, Lamp(lampPosition1, lampAmbient1, lampDiffuse1, lampSpecular1, lampFading1), lit[1], place, normal, toEye, roughness);
#endif
#ifndef LIGHT2_OFF
    addLight(sum, 2, Lamp(lampPosition2, lampAmbient2, lampDiffuse2, lampSpecular2, lampFading2), lit[2], place, normal, toEye, roughness);
#endif
    return sum;
}

vec3 blackened(vec3 color, vec3 place, vec3 normal)
{
#ifdef BLACK_SHADOWS
    color *= shadowVisibility(place, normal);
#endif
    return color;
}

vec3 mattColor(vec3 place, vec3 normal, vec3 color)
{
    Sum sum = lightAt(place, normal, 1.0, 1.0);
    return blackened(color * (sum.ambient + sum.direct), place, normal);
}

vec3 litColor(vec3 place, vec3 normal, vec3 ambient, vec3 diffuse, vec3 texel, vec3 shine, vec2 metalRoughness,
              vec3 glow, float open)
{
#ifdef METAL_ROUGHNESS
    float metal = metalRoughnessFactors.x * metalRoughness.x;
    float roughness = clamp(metalRoughnessFactors.y * metalRoughness.y, 0.05, 1.0);
    Sum sum = lightAt(place, normal, open, roughness);
    vec3 toEye = -normalize(place);
    vec3 base = diffuse * texel;
    vec3 mirror = mix(vec3(0.04), toLight(base), metal);
    vec3 reflected = mirrorShare(mirror, roughness, max(dot(normal, toEye), 0.0));
    vec3 mirrored = mirroredSky(reflect(-toEye, normal), roughness);
    vec3 matt = toLight(base * (sum.ambient * open + sum.direct)) * (1.0 - metal) * (1.0 - reflected);
    vec3 color = toScreen(matt + reflected * toLight(mirrored) * open + mirror * sum.highlight + toLight(glow));
#else
    Sum sum = lightAt(place, normal, open, 1.0);
    vec3 matt = glow + ambient * sum.ambient + diffuse * sum.direct;
    vec3 color = clamp(matt, 0.0, 1.0) * texel + materialSpecular * shine * sum.highlight;
#endif
    return blackened(color, place, normal);
}
)";

} // namespace

osg::ref_ptr<osg::Shader> lightEquationShader() {
    static osg::ref_ptr<osg::Shader> const shader =
        new osg::Shader(osg::Shader::FRAGMENT, withDrawingValues(lightEquationSource));
    return shader;
}

} // namespace hyxOSG::decorator
