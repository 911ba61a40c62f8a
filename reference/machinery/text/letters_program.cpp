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

char const* const fragmentSource = R"(#version 120
uniform sampler2D page;
varying vec2 place;

void main() {
    float coverage = place.s < 0.0 ? 1.0 : texture2D(page, place).a;
    if (coverage == 0.0)
        discard;
    gl_FragColor = vec4(gl_Color.rgb, gl_Color.a * coverage);
}
)";

} // namespace

osg::ref_ptr<osg::StateSet> lettersState() {
    static osg::ref_ptr<osg::StateSet> const shared = [] {
        osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
        osg::ref_ptr<osg::Program> const program = new osg::Program;
        program->setName("letters");
        program->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
        program->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentSource));
        state->setAttributeAndModes(program);
        state->addUniform(new osg::Uniform("page", 0));
        state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
        state->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
        state->setMode(GL_BLEND, osg::StateAttribute::ON);
        return state;
    }();
    return shared;
}

} // namespace hyxOSG
