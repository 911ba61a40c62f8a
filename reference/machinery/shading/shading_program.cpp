// Writes the program that all lit surfaces share.
#include "reference/machinery/shading/shading_program.h"

#include "reference/machinery/shading/light_equation.h"
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/TexGen>
#include <osg/Uniform>

#include <string>

namespace hyxOSG::decorator {
namespace {

// gl_Color holds the whole light of a vertex. What a shadow takes away is the shadow light's share of the matt light,
// worked out from the lights alone: exact where ambient and diffuse material colours are equal, as they usually are.
char const* const fragmentSource = R"(
uniform sampler2D hyx_baseTexture;
uniform bool hyx_lit;
uniform bool hyx_lightOff0, hyx_lightOff1, hyx_lightOff2; // a node's own switches

vec3 eyePosition() { return gl_TexCoord[EYE_POSITION].xyz; }
vec3 eyeNormal() { return normalize(gl_TexCoord[EYE_NORMAL].xyz); }

float shadowVisibility(vec3 eyePosition, vec3 eyeNormal);

vec4 lightIncidence(int light, vec3 place);
float lightShine(vec3 normal, vec3 toLight, vec3 toEye);

void main()
{
    vec4 texel = texture2D(hyx_baseTexture, gl_TexCoord[0].st);
    vec4 color = gl_Color * texel;
    if (hyx_lit) {
        vec3 normal = eyeNormal();
        vec3 all = gl_LightModel.ambient.rgb;
        vec3 blockable = vec3(0.0);
        vec3 highlight = vec3(0.0);
        float visible = shadowVisibility(eyePosition(), normal);
        ALL_LIGHTS
#ifdef BLACK_SHADOWS
        color.rgb *= visible;
#else
        color.rgb *= 1.0 - (1.0 - visible) * blockable / max(all, vec3(1e-4));
#endif
#if PIXEL_HIGHLIGHTS
        color.rgb += highlight;
#else
        color.rgb += gl_SecondaryColor.rgb * visible;
#endif
    }
    gl_FragColor = color;
}
)";

char const* const lightSource = R"(
        if (!hyx_lightOffINDEX) {
            vec4 way = lightIncidence(INDEX, eyePosition());
            float facing = max(dot(normal, way.xyz), 0.0);
            vec3 matt = gl_LightSource[INDEX].diffuse.rgb * (way.w * facing);
            all += gl_LightSource[INDEX].ambient.rgb * way.w + matt;
#if THROWS_SHADOW
            blockable += matt;
#endif
#if PIXEL_HIGHLIGHTS
            if (facing > 0.0) {
                float shine = lightShine(normal, way.xyz, -normalize(eyePosition())) * way.w;
                highlight += gl_FrontLightProduct[INDEX].specular.rgb * shine * (THROWS_SHADOW ? visible : 1.0);
            }
#endif
        }
)";

void replaceAll(std::string& text, std::string const& from, std::string const& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
}

std::string lightText(int index, ShadingOptions const& options) {
    std::string text = lightSource;
    bool const throws = options.shadowMaps > 0 && options.shadowLight == index;
    replaceAll(text, "#if THROWS_SHADOW", throws ? "#if 1" : "#if 0");
    replaceAll(text, "THROWS_SHADOW", throws ? "true" : "false");
    replaceAll(text, "INDEX", std::to_string(index));
    return text;
}

std::string define(char const* name, unsigned int value) {
    return std::string("#define ") + name + " " + std::to_string(value) + "\n";
}

std::string fragmentText(ShadingOptions const& options) {
    std::string lights;
    for (int index = 0; index < 3; ++index)
        if (options.lights & (1u << index))
            lights += lightText(index, options);
    std::string text = "#version 120\n#pragma import_defines(BLACK_SHADOWS)\n" +
                       define("PIXEL_HIGHLIGHTS", options.perPixelHighlights) +
                       define("EYE_POSITION", EYE_POSITION_UNIT) + define("EYE_NORMAL", EYE_NORMAL_UNIT) +
                       fragmentSource;
    replaceAll(text, "ALL_LIGHTS", lights);
    return text;
}

void addCoordinateGenerators(osg::StateSet& state) {
    auto* normals = new osg::TexGen;
    normals->setMode(osg::TexGen::NORMAL_MAP);
    state.setTextureAttribute(EYE_NORMAL_UNIT, normals);
    for (GLenum mode : {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R}) {
        state.setTextureMode(EYE_NORMAL_UNIT, mode, osg::StateAttribute::ON);
        state.setTextureMode(EYE_POSITION_UNIT, mode, osg::StateAttribute::ON);
    }
    state.setTextureMode(EYE_POSITION_UNIT, GL_TEXTURE_GEN_Q, osg::StateAttribute::ON);
}

} // namespace

osg::ref_ptr<osg::StateSet> createShadingState(ShadingOptions const& options) {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    auto* program = new osg::Program;
    program->setName("hyxOSG::SceneDecorator");
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentText(options)));
    program->addShader(lightEquationShader());
    program->addShader(shadowLookupShader());
    state->setAttributeAndModes(program);
    state->addUniform(new osg::Uniform("hyx_baseTexture", static_cast<int>(BASE_TEXTURE_UNIT)));
    state->addUniform(new osg::Uniform("hyx_lit", true));
    state->addUniform(new osg::Uniform("hyx_receivesShadow", true));
    declareShadowMaps(*state, options);
    addCoordinateGenerators(*state);
    return state;
}

osg::ref_ptr<osg::TexGenNode> createEyePositionGenerator() {
    osg::ref_ptr<osg::TexGenNode> node = new osg::TexGenNode;
    node->setTextureUnit(EYE_POSITION_UNIT);
    node->setReferenceFrame(osg::TexGenNode::ABSOLUTE_RF);
    node->getTexGen()->setMode(osg::TexGen::EYE_LINEAR);
    return node;
}

} // namespace hyxOSG::decorator
