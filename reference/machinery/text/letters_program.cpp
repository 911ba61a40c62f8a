// Colours pixels as far as a letter covers them.
#include "reference/machinery/text/letters_program.h"

#include <osg/Program>

namespace hyxOSG {
namespace {

char const* const vertexSource = R"(#version 120
varying vec2 place;

void main() {
    place = gl_MultiTexCoord0.st;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
)";

char const* const upright = R"(#version 120
uniform sampler2D page;

float coverageAt(vec2 place) {
    return texture2D(page, place).a;
}
)";

// The drivers' own anisotropic filters take minutes for a picture in software where a text runs to the horizon: they go
// over all texels that a pixel covers.
char const* const slanted = R"(#version 120
uniform sampler2D page;

float coverageAt(vec2 place) {
    const float reads = 4.0, farthest = 0.1;
    vec2 across = dFdx(place), up = dFdy(place);
    vec2 longer = dot(across, across) > dot(up, up) ? across : up;
    float ratio = length(longer) / max(min(length(across), length(up)), 1e-9);
    float parts = clamp(ratio, 1.0, reads);
    longer *= (1.0 - 1.0 / parts) * min(1.0, farthest / max(length(longer), 1e-9));
    float sum = 0.0;
    for (float read = 0.0; read < reads; read += 1.0)
        sum += texture2D(page, place + longer * (read / (reads - 1.0) - 0.5), -log2(parts)).a;
    return sum / reads;
}
)";

char const* const fragmentSource = R"(#version 120
varying vec2 place;
float coverageAt(vec2 place);

void main() {
    float coverage = place.s < 0.0 ? 1.0 : coverageAt(place);
    if (coverage == 0.0)
        discard;
    gl_FragColor = vec4(gl_Color.rgb, gl_Color.a * coverage);
}
)";

osg::ref_ptr<osg::StateSet> makeState(char const* reading) {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    osg::ref_ptr<osg::Program> const program = new osg::Program;
    program->setName("letters");
    program->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
    for (char const* const source : {reading, fragmentSource})
        program->addShader(new osg::Shader(osg::Shader::FRAGMENT, source));
    state->setAttributeAndModes(program);
    state->addUniform(new osg::Uniform("page", 0));
    state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    state->setMode(GL_BLEND, osg::StateAttribute::ON);
    return state;
}

} // namespace

osg::ref_ptr<osg::StateSet> lettersState(bool slanting) {
    static osg::ref_ptr<osg::StateSet> const states[] = {makeState(upright), makeState(slanted)};
    return states[slanting];
}

void releaseLettersPrograms(osg::State* state) {
    for (bool const slanting : {false, true})
        lettersState(slanting)->releaseGLObjects(state);
}

} // namespace hyxOSG
