// The text of the program that draws every lit surface.
#include "reference/machinery/shading/surface_program.h"

#include "reference/machinery/shading/drawing_values.h"
#include "reference/machinery/shading/light_equation.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/BlendFunc>
#include <osg/NodeVisitor>
#include <osg/Program>
#include <osg/Uniform>

#include <array>
#include <string>

namespace hyxOSG {
namespace {

char const* const vertexSource = R"(#version 120
#pragma import_defines(FADES)
void setDrawingValues();
uniform bool hyx_unlit, hyx_vertexColors;
varying vec3 position;
varying vec3 normal;
varying vec2 texcoord;
varying vec2 basePlace;
varying vec4 tint;
#ifdef FADES
varying vec2 fromMiddle;
#endif

void main() {
#ifdef FADES
    fromMiddle = gl_Vertex.xy;
#endif
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    position = eye.xyz;
    normal = gl_NormalMatrix * gl_Normal;
    texcoord = gl_MultiTexCoord0.xy;
    basePlace = (gl_TextureMatrix[0] * gl_MultiTexCoord0).xy;
    tint = hyx_unlit || hyx_vertexColors ? gl_Color : gl_FrontMaterial.diffuse;
    setDrawingValues();
    gl_ClipVertex = eye;
    gl_Position = ftransform();
}
)";

// Tangents come from screen-space derivatives, so that meshes need none of their own.
char const* const fragmentSource = R"(
#pragma import_defines(DIFFUSE_MAP, SHADOW_MAP, SHADOW_JITTER_MAP, NORMAL_MAP, HEIGHT_MAP, SPECULAR_MAP, SPHERE_MAP, CUBE_MAP)
#pragma import_defines(METAL_ROUGHNESS_MAP, GLOW_MAP, FADES)
varying vec3 position;
varying vec3 normal;
varying vec2 texcoord;
varying vec2 basePlace;
varying vec4 tint;
#ifdef FADES
varying vec2 fromMiddle;
uniform float hyx_groundTone;
#endif
uniform sampler2D map0, map1, map2, map3, map4, map5, map6;
uniform samplerCube cubeMap;
uniform float hyx_reflection;
uniform mat4 osg_ViewMatrixInverse;

vec3 litColor(vec3 place, vec3 normal, vec3 ambient, vec3 diffuse, vec3 texel, vec3 shine, vec2 metalRoughness,
              vec3 glow, float open);

vec2 scaled(mat4 scale, vec2 place) { return (scale * vec4(place, 0.0, 1.0)).xy; }

mat3 tangentFrame(vec3 n, vec2 place) {
    vec3 dp1 = dFdx(position), dp2 = dFdy(position);
    vec2 duv1 = dFdx(place), duv2 = dFdy(place);
    vec3 perpendicular1 = cross(n, dp1), perpendicular2 = cross(dp2, n);
    vec3 t = perpendicular2 * duv1.x + perpendicular1 * duv2.x;
    vec3 b = perpendicular2 * duv1.y + perpendicular1 * duv2.y;
    float size = sign(dot(dp1, perpendicular2)) * inversesqrt(max(max(dot(t, t), dot(b, b)), 1e-20));
    return mat3(t * size, b * size, n);
}

// Surfaces are lit from the side that is seen, whichever way round their corners and normals are. Of the plane that the
// derivatives span no sign counts: drivers take that of dFdy from the frame buffer before, where nothing else changed.
vec3 facingNormal() {
    vec3 n = normalize(normal);
    vec3 across = cross(dFdx(position), dFdy(position));
    float seen = perspective > 0.5 ? -dot(across, position) : across.z;
    return dot(n, across) * seen < 0.0 ? -n : n;
}

void main() {
    vec4 texel = vec4(1.0);
#if defined(HEIGHT_MAP) || defined(NORMAL_MAP) || defined(SHADOW_MAP) || defined(SPHERE_MAP) || defined(CUBE_MAP)
    vec3 toEye = -normalize(position);
#endif
    vec3 n = facingNormal();
    vec2 place = texcoord;
    vec2 diffusePlace = basePlace;
#ifdef HEIGHT_MAP
    vec2 heightPlace = scaled(gl_TextureMatrix[4], texcoord);
    mat3 heightFrame = tangentFrame(n, heightPlace);
    float height = texture2D(map4, heightPlace).r;
    vec3 along = toEye * heightFrame;
    place += 0.04 * (height - 0.5) * along.xy / max(along.z, 0.3);
    diffusePlace = scaled(gl_TextureMatrix[0], place);
    vec2 step = vec2(1.0 / 256.0, 0.0);
    vec2 rise = vec2(texture2D(map4, heightPlace + step.xy).r - texture2D(map4, heightPlace - step.xy).r,
                     texture2D(map4, heightPlace + step.yx).r - texture2D(map4, heightPlace - step.yx).r);
    n = normalize(heightFrame * vec3(-4.0 * rise, 1.0));
#endif
#ifdef DIFFUSE_MAP
    texel = texture2D(map0, diffusePlace);
#endif
    if (unlit > 0.5) {
        gl_FragColor = tint * texel;
        return;
    }
#ifdef NORMAL_MAP
    vec2 normalPlace = scaled(gl_TextureMatrix[3], place);
    n = normalize(tangentFrame(n, normalPlace) * (2.0 * texture2D(map3, normalPlace).xyz - 1.0));
#endif
    float open = 1.0;
#ifdef SHADOW_MAP
    vec2 shadowPlace = scaled(gl_TextureMatrix[1], place);
#ifdef SHADOW_JITTER_MAP
    shadowPlace += 0.02 * (texture2D(map2, scaled(gl_TextureMatrix[2], place)).rg - 0.5);
#endif
    open = texture2D(map1, shadowPlace).r;
#endif
    vec3 shine = vec3(1.0);
#ifdef SPECULAR_MAP
    shine = texture2D(map5, scaled(gl_TextureMatrix[5], place)).rgb;
#endif
    vec2 metalRoughness = vec2(1.0);
#ifdef METAL_ROUGHNESS_MAP
    metalRoughness = texture2D(map5, scaled(gl_TextureMatrix[5], place)).bg;
#endif
    vec3 glow = materialGlow;
#ifdef GLOW_MAP
    glow *= texture2D(map2, scaled(gl_TextureMatrix[2], place)).rgb;
#endif
    vec3 ambient = coloredByVertices > 0.5 ? tint.rgb : materialAmbient;
    vec3 color = litColor(position, n, ambient, tint.rgb, texel.rgb, shine, metalRoughness, glow, open);
#if defined(SPHERE_MAP) || defined(CUBE_MAP)
    vec3 mirrored = reflect(-toEye, n);
#endif
#ifdef SPHERE_MAP
    vec2 onBall = mirrored.xy / (2.0 * length(mirrored + vec3(0.0, 0.0, 1.0))) + 0.5;
    color = mix(color, texture2D(map6, scaled(gl_TextureMatrix[6], onBall)).rgb, hyx_reflection);
#endif
#ifdef CUBE_MAP
    vec3 inWorld = mat3(osg_ViewMatrixInverse[0].xyz, osg_ViewMatrixInverse[1].xyz, osg_ViewMatrixInverse[2].xyz) * mirrored;
    color = mix(color, textureCube(cubeMap, vec3(inWorld.x, inWorld.z, -inWorld.y)).rgb, hyx_reflection);
#endif
    float alpha = tint.a * texel.a;
#ifdef FADES
    alpha *= 1.0 - smoothstep(0.15, 1.0, length(fromMiddle));
#ifdef SKY_LIGHT
    color *= hyx_groundTone;
#endif
#endif
    gl_FragColor = vec4(color, alpha);
}
)";

constexpr std::array<char const*, 7> defineNames{"DIFFUSE_MAP", "SHADOW_MAP",   "SHADOW_JITTER_MAP", "NORMAL_MAP",
                                                 "HEIGHT_MAP",  "SPECULAR_MAP", "SPHERE_MAP"};

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

osg::Program& surfaceProgram() {
    static osg::ref_ptr<osg::Program> const program = [] {
        osg::ref_ptr<osg::Program> const made = new osg::Program;
        made->setName("surface");
        made->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
        made->addShader(new osg::Shader(osg::Shader::FRAGMENT, decorator::withDrawingValues(fragmentSource)));
        made->addShader(decorator::drawingValuesShader());
        made->addShader(decorator::lightEquationShader());
        made->addShader(decorator::shadowLookupShader());
        return made;
    }();
    return *program;
}

void addSurfaceUniforms(osg::StateSet& state) {
    for (int unit = 0; unit < static_cast<int>(defineNames.size()); ++unit)
        state.addUniform(new osg::Uniform(("map" + std::to_string(unit)).c_str(), unit));
    state.addUniform(new osg::Uniform("cubeMap", static_cast<int>(cubeMapUnit)));
    decorator::declareDrawingValues(state);
}

void declareTexture(osg::Node& node, TextureMode mode) {
    writableStateSet(node).setDefine(defineNames.at(mode));
}

void useSurfaceProgram(osg::Node& node) {
    osg::StateSet& state = writableStateSet(node);
    state.setAttributeAndModes(&surfaceProgram(), setByScript);
    addSurfaceUniforms(state);
    DeclareColorTextures visitor;
    node.accept(visitor);
}

void declareCubeMap(osg::Node& node) {
    writableStateSet(node).setDefine("CUBE_MAP");
}

void declareFading(osg::StateSet& state) {
    state.setDefine("FADES");
    setGroundTone(state, 0.8f, osg::StateAttribute::ON); // what stands on it and has its colour is seen before it
    // Behind all that is opaque, not among what is sorted: nothing can be seen through a ground but what it ends at.
    state.setRenderBinDetails(1, "RenderBin");
    state.setMode(GL_BLEND, osg::StateAttribute::ON);
    state.setAttribute(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA));
}

void setNormalMap(osg::StateSet& state, osg::Texture2D& texture) {
    state.setTextureAttribute(NORMALMAP_TEXTURE, &texture);
    state.setDefine(defineNames[NORMALMAP_TEXTURE]);
}

void setGlowMap(osg::StateSet& state, osg::Texture2D& texture) {
    state.setTextureAttribute(SHADOW_JITTER_TEXTURE, &texture);
    state.setDefine("GLOW_MAP");
}

void setMetalRoughness(osg::StateSet& state, float metal, float roughness, osg::Texture2D* texture) {
    state.setDefine("METAL_ROUGHNESS");
    state.addUniform(new osg::Uniform("hyx_metalRoughness", osg::Vec2(metal, roughness)));
    if (!texture)
        return;
    state.setTextureAttribute(SPECULARMAP_TEXTURE, texture);
    state.setDefine("METAL_ROUGHNESS_MAP");
}

void setReflection(osg::Node& node, float coefficient, bool onlyIfUnset) {
    osg::StateSet& state = writableStateSet(node);
    if (!onlyIfUnset || !state.getUniform("hyx_reflection"))
        state.addUniform(new osg::Uniform("hyx_reflection", coefficient), setByScript);
}

} // namespace hyxOSG
