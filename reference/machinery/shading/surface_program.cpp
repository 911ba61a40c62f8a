// The program of surfaces with normal maps, cube maps and further textures.
#include "reference/machinery/shading/surface_program.h"

#include "reference/machinery/shading/light_equation.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/NodeVisitor>
#include <osg/Program>
#include <osg/Uniform>

#include <array>
#include <string>

namespace hyxOSG {
namespace {

char const* const vertexSource = R"(#version 120
varying vec3 position;
varying vec3 normal;
varying vec2 texcoord;

void main() {
    position = vec3(gl_ModelViewMatrix * gl_Vertex);
    normal = gl_NormalMatrix * gl_Normal;
    texcoord = gl_MultiTexCoord0.xy;
    gl_ClipVertex = gl_ModelViewMatrix * gl_Vertex;
    gl_Position = ftransform();
}
)";

// Tangents come from screen-space derivatives, so that meshes need none of their own.
char const* const fragmentSource = R"(#version 120
#pragma import_defines(DIFFUSE_MAP, SHADOW_MAP, SHADOW_JITTER_MAP, NORMAL_MAP, HEIGHT_MAP, SPECULAR_MAP, SPHERE_MAP, CUBE_MAP)
#pragma import_defines(SHADOW_LIGHT, BLACK_SHADOWS)
varying vec3 position;
varying vec3 normal;
varying vec2 texcoord;
uniform sampler2D map0, map1, map2, map3, map4, map5, map6;
uniform samplerCube cubeMap;
uniform float hyx_reflection;
uniform bool hyx_lightOff0, hyx_lightOff1, hyx_lightOff2;
uniform mat4 osg_ViewMatrixInverse;

float shadowVisibility(vec3 eyePosition, vec3 eyeNormal);

vec2 scaled(mat4 scale, vec2 place) { return (scale * vec4(place, 0.0, 1.0)).xy; }

mat3 tangentFrame(vec3 n, vec2 place) {
    vec3 dp1 = dFdx(position), dp2 = dFdy(position);
    vec2 duv1 = dFdx(place), duv2 = dFdy(place);
    vec3 perpendicular1 = cross(n, dp1), perpendicular2 = cross(dp2, n);
    vec3 t = perpendicular2 * duv1.x + perpendicular1 * duv2.x;
    vec3 b = perpendicular2 * duv1.y + perpendicular1 * duv2.y;
    float size = max(max(dot(t, t), dot(b, b)), 1e-20);
    return mat3(t * inversesqrt(size), b * inversesqrt(size), n);
}

vec4 lightIncidence(int light, vec3 place);
float lightShine(vec3 normal, vec3 toLight, vec3 toEye);

void addLight(int light, gl_LightProducts product, vec3 n, vec3 toEye, float lit, inout vec3 diffuse, inout vec3 specular) {
    vec4 way = lightIncidence(light, position);
    float slope = max(dot(n, way.xyz), 0.0);
    diffuse += way.w * (product.ambient.rgb + lit * slope * product.diffuse.rgb);
    if (slope > 0.0)
        specular += way.w * lit * lightShine(n, way.xyz, toEye) * product.specular.rgb;
}

void main() {
    vec3 toEye = -normalize(position);
    vec3 n = normalize(normal);
    if (!gl_FrontFacing)
        n = -n;
    float visible = shadowVisibility(position, n);
    vec2 place = texcoord;
#ifdef HEIGHT_MAP
    vec2 heightPlace = scaled(gl_TextureMatrix[4], texcoord);
    mat3 heightFrame = tangentFrame(n, heightPlace);
    float height = texture2D(map4, heightPlace).r;
    vec3 along = toEye * heightFrame;
    place += 0.04 * (height - 0.5) * along.xy / max(along.z, 0.3);
    vec2 texel = vec2(1.0 / 256.0, 0.0);
    vec2 rise = vec2(texture2D(map4, heightPlace + texel.xy).r - texture2D(map4, heightPlace - texel.xy).r,
                     texture2D(map4, heightPlace + texel.yx).r - texture2D(map4, heightPlace - texel.yx).r);
    n = normalize(heightFrame * vec3(-4.0 * rise, 1.0));
#endif
#ifdef NORMAL_MAP
    vec2 normalPlace = scaled(gl_TextureMatrix[3], place);
    n = normalize(tangentFrame(n, normalPlace) * (2.0 * texture2D(map3, normalPlace).xyz - 1.0));
#endif
    float lit = 1.0;
#ifdef SHADOW_MAP
    vec2 shadowPlace = scaled(gl_TextureMatrix[1], place);
#ifdef SHADOW_JITTER_MAP
    shadowPlace += 0.02 * (texture2D(map2, scaled(gl_TextureMatrix[2], place)).rg - 0.5);
#endif
    lit = texture2D(map1, shadowPlace).r;
#endif
    vec3 litBy = vec3(lit);
#ifdef SHADOW_LIGHT
    litBy[SHADOW_LIGHT] *= visible;
#endif
    vec3 diffuse = gl_FrontLightModelProduct.sceneColor.rgb, specular = vec3(0.0);
    if (!hyx_lightOff0)
        addLight(0, gl_FrontLightProduct[0], n, toEye, litBy[0], diffuse, specular);
    if (!hyx_lightOff1)
        addLight(1, gl_FrontLightProduct[1], n, toEye, litBy[1], diffuse, specular);
    if (!hyx_lightOff2)
        addLight(2, gl_FrontLightProduct[2], n, toEye, litBy[2], diffuse, specular);
    float alpha = gl_FrontMaterial.diffuse.a;
#ifdef DIFFUSE_MAP
    vec4 texel0 = texture2D(map0, scaled(gl_TextureMatrix[0], place));
    diffuse *= texel0.rgb;
    alpha *= texel0.a;
#endif
#ifdef SPECULAR_MAP
    specular *= texture2D(map5, scaled(gl_TextureMatrix[5], place)).rgb;
#endif
    vec3 color = clamp(diffuse, 0.0, 1.0) + specular;
    vec3 mirrored = reflect(-toEye, n);
#ifdef SPHERE_MAP
    vec2 onBall = mirrored.xy / (2.0 * length(mirrored + vec3(0.0, 0.0, 1.0))) + 0.5;
    color = mix(color, texture2D(map6, scaled(gl_TextureMatrix[6], onBall)).rgb, hyx_reflection);
#endif
#ifdef CUBE_MAP
    vec3 inWorld = mat3(osg_ViewMatrixInverse[0].xyz, osg_ViewMatrixInverse[1].xyz, osg_ViewMatrixInverse[2].xyz) * mirrored;
    color = mix(color, textureCube(cubeMap, vec3(inWorld.x, inWorld.z, -inWorld.y)).rgb, hyx_reflection);
#endif
#ifdef BLACK_SHADOWS
    color *= visible;
#endif
    gl_FragColor = vec4(color, alpha);
}
)";

constexpr std::array<char const*, 7> defineNames{"DIFFUSE_MAP", "SHADOW_MAP",   "SHADOW_JITTER_MAP", "NORMAL_MAP",
                                                 "HEIGHT_MAP",  "SPECULAR_MAP", "SPHERE_MAP"};

osg::Program& surfaceProgram() {
    static osg::ref_ptr<osg::Program> const program = [] {
        osg::ref_ptr<osg::Program> const made = new osg::Program;
        made->setName("surface");
        made->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
        made->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentSource));
        made->addShader(decorator::lightEquationShader());
        made->addShader(decorator::shadowLookupShader());
        return made;
    }();
    return *program;
}

/// Declares the colour textures that models carry themselves.
class DeclareColorTextures : public osg::NodeVisitor {
public:
    DeclareColorTextures() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        osg::StateSet* const state = node.getStateSet();
        if (state && state->getTextureAttribute(DIFFUSE_TEXTURE, osg::StateAttribute::TEXTURE))
            state->setDefine(defineNames[DIFFUSE_TEXTURE]);
        traverse(node);
    }
};

} // namespace

void declareTexture(osg::Node& node, TextureMode mode) {
    writableStateSet(node).setDefine(defineNames.at(mode));
}

void useSurfaceProgram(osg::Node& node) {
    osg::StateSet& state = writableStateSet(node);
    state.setAttributeAndModes(&surfaceProgram(), setByScript);
    for (int unit = 0; unit < static_cast<int>(defineNames.size()); ++unit)
        state.addUniform(new osg::Uniform(("map" + std::to_string(unit)).c_str(), unit));
    state.addUniform(new osg::Uniform("cubeMap", static_cast<int>(cubeMapUnit)));
    DeclareColorTextures visitor;
    node.accept(visitor);
}

void declareCubeMap(osg::Node& node) {
    writableStateSet(node).setDefine("CUBE_MAP");
}

void setReflection(osg::Node& node, float coefficient, bool onlyIfUnset) {
    osg::StateSet& state = writableStateSet(node);
    if (!onlyIfUnset || !state.getUniform("hyx_reflection"))
        state.addUniform(new osg::Uniform("hyx_reflection", coefficient), setByScript);
}

} // namespace hyxOSG
