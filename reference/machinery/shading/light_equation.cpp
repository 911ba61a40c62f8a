// The text of the equation by which every program dims lights.
#include "reference/machinery/shading/light_equation.h"

namespace hyxOSG::decorator {
namespace {

char const* const lightEquationSource = R"(#version 120
vec4 lightIncidence(int light, vec3 place)
{
    vec4 from = gl_LightSource[light].position;
    vec3 way = from.xyz - place * from.w;
    float d = length(way);
    way /= max(d, 1e-6);
    float strength = 1.0;
    if (from.w != 0.0) {
        strength = 1.0 / (gl_LightSource[light].constantAttenuation +
                          d * (gl_LightSource[light].linearAttenuation + d * gl_LightSource[light].quadraticAttenuation));
        if (gl_LightSource[light].spotCutoff < 180.0) {
            float c = dot(-way, normalize(gl_LightSource[light].spotDirection));
            strength *= c < gl_LightSource[light].spotCosCutoff ? 0.0 : pow(c, gl_LightSource[light].spotExponent);
        }
    }
    return vec4(way, strength);
}

float lightShine(vec3 normal, vec3 toLight, vec3 toEye)
{
    return pow(max(dot(normal, normalize(toLight + toEye)), 0.0), max(gl_FrontMaterial.shininess, 1e-3));
}
)";

} // namespace

osg::ref_ptr<osg::Shader> lightEquationShader() {
    static osg::ref_ptr<osg::Shader> const shader = new osg::Shader(osg::Shader::FRAGMENT, lightEquationSource);
    return shader;
}

} // namespace hyxOSG::decorator
