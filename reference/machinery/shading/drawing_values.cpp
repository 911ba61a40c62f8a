// The table of what is the same all over a drawing, and the shaders' declarations made of it.
#include "reference/machinery/shading/drawing_values.h"

#include <osg/Shader>

#include <vector>

namespace hyxOSG::decorator {
namespace {

char const* const defineName = "DRAWING_VALUES";

// Integers are no varyings before GLSL 1.30, and interpolated ones would not be exact.
char const* const head = R"(#version 120
#extension GL_EXT_gpu_shader4 : enable
#pragma import_defines(DRAWING_VALUES, SKY_LIGHT, METAL_ROUGHNESS, LIGHT0_OFF, LIGHT1_OFF, LIGHT2_OFF)
#pragma import_defines(SHADOW_MAPS, SHADOW_LIGHT, SOFT_SHADOWS)
#ifndef GL_EXT_gpu_shader4
#undef DRAWING_VALUES
#endif
uniform bool hyx_unlit, hyx_vertexColors, hyx_receivesShadow;
uniform bool hyx_lightOff0, hyx_lightOff1, hyx_lightOff2; // a node's own switches
uniform vec3 hyx_skyColor, hyx_groundColor;
uniform float hyx_skyLack; // how much darker it is than what lamps need beside them, lest shades be black
uniform vec2 hyx_metalRoughness; // of glTF's definition, both 0 to 1
uniform mat4 osg_ViewMatrix;
#ifdef SHADOW_MAPS
uniform mat4 hyx_shadowMatrix[SHADOW_MAPS];
uniform float hyx_shadowTexel[SHADOW_MAPS];
uniform vec2 hyx_penumbra[SHADOW_MAPS]; // its half width in the map, for a gap of all depths
uniform float hyx_shadowMapSize;
uniform vec2 hyx_pixelSize; // in metres: for each metre of distance, and besides
#endif
)";

struct Value {
    std::string condition, type, name, formula;
};

void addLamp(std::vector<Value>& values, std::string const& index) {
    std::string const on = "!defined(LIGHT" + index + "_OFF)";
    std::string const light = "gl_LightSource[" + index + "].";
    auto const unlessOff = [&](char const* part) {
        return "hyx_lightOff" + index + " ? vec3(0.0) : " + light + part + ".rgb";
    };
    values.push_back({on, "vec4", "lampPosition" + index, light + "position"});
    values.push_back({on, "vec3", "lampAmbient" + index, unlessOff("ambient")});
    values.push_back({on, "vec3", "lampDiffuse" + index, unlessOff("diffuse")});
    values.push_back({on, "vec3", "lampSpecular" + index, unlessOff("specular")});
    values.push_back(
        {on, "vec3", "lampFading" + index,
         "vec3(" + light + "constantAttenuation, " + light + "linearAttenuation, " + light + "quadraticAttenuation)"});
}

std::vector<Value> drawingValues() {
    char const* const always = "1";
    char const* const inSky = "defined(SKY_LIGHT) || defined(METAL_ROUGHNESS)";
    char const* const inShadow = "defined(SHADOW_MAPS)";
    char const* const inSoftShadow = "defined(SHADOW_MAPS) && defined(SOFT_SHADOWS)";
    std::vector<Value> values{
        {always, "float", "unlit", "hyx_unlit ? 1.0 : 0.0"},
        {always, "float", "coloredByVertices", "hyx_vertexColors ? 1.0 : 0.0"},
        {always, "float", "perspective", "gl_ProjectionMatrix[2][3] != 0.0 ? 1.0 : 0.0"},
        {always, "vec3", "ambientLightColor", "gl_LightModel.ambient.rgb"},
        {always, "vec3", "materialAmbient", "gl_FrontMaterial.ambient.rgb"},
        {always, "vec3", "materialGlow", "gl_FrontMaterial.emission.rgb"},
        {always, "vec3", "materialSpecular", "gl_FrontMaterial.specular.rgb"},
        {always, "float", "materialShininess", "gl_FrontMaterial.shininess"},
        {"defined(METAL_ROUGHNESS)", "vec2", "metalRoughnessFactors", "hyx_metalRoughness"},
        {inSky, "vec3", "skyColor", "hyx_skyColor"},
        {inSky, "vec3", "groundColor", "hyx_groundColor"},
        {inSky, "vec3", "skyward", "osg_ViewMatrix[2].xyz"},
        {inSky, "float", "skyLack", "hyx_skyLack"},
        {inShadow, "float", "receivesShadow", "hyx_receivesShadow ? 1.0 : 0.0"},
        {inShadow, "mat4", "shadowMatrix", "hyx_shadowMatrix[0]"},
        {inShadow, "float", "shadowTexel", "hyx_shadowTexel[0]"},
        {inShadow, "vec2", "pixelSize", "hyx_pixelSize"},
        {inSoftShadow, "vec2", "penumbra", "hyx_penumbra[0]"},
        {inSoftShadow, "float", "shadowMapSize", "hyx_shadowMapSize"},
        {inSoftShadow, "vec4", "shadowLampPosition", "gl_LightSource[SHADOW_LIGHT].position"},
    };
    for (char const* const index : {"0", "1", "2"})
        addLamp(values, index);
    return values;
}

std::string declarations() {
    std::string text = head;
    for (Value const& value : drawingValues())
        text += "#if " + value.condition + "\n#ifdef DRAWING_VALUES\nflat varying " + value.type + " " + value.name +
                ";\n#else\n#define " + value.name + " (" + value.formula + ")\n#endif\n#endif\n";
    return text;
}

std::string function() {
    std::string text = "void setDrawingValues() {\n#ifdef DRAWING_VALUES\n";
    for (Value const& value : drawingValues())
        text += "#if " + value.condition + "\n" + value.name + " = " + value.formula + ";\n#endif\n";
    return text + "#endif\n}\n";
}

} // namespace

std::string withDrawingValues(char const* text) {
    return declarations() + text;
}

osg::ref_ptr<osg::Shader> drawingValuesShader() {
    static osg::ref_ptr<osg::Shader> const shader =
        new osg::Shader(osg::Shader::VERTEX, withDrawingValues(function().c_str()));
    return shader;
}

void declareDrawingValues(osg::StateSet& state, bool enable) {
    state.setDefine(defineName, enable ? osg::StateAttribute::ON : osg::StateAttribute::OFF);
}

} // namespace hyxOSG::decorator
