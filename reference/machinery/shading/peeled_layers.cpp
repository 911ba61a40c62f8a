// Copies depth buffers, and holds the program that compares with them.
#include "reference/machinery/shading/peeled_layers.h"

#include <string>

namespace hyxOSG {
namespace {

constexpr unsigned int behindUnit = 11; // no texture of a scene or of its shadows

// The vertices lie exactly where the fixed functions and the program of surfaces have them.
char const* const depthVertices = R"(#version 120
void main() {
    gl_ClipVertex = gl_ModelViewMatrix * gl_Vertex;
    gl_Position = ftransform();
}
)";

char const* const pixelDepth = R"(#version 120
uniform sampler2D hyx_behind;
uniform vec2 hyx_pixel;
float behind() { return texture2D(hyx_behind, gl_FragCoord.xy * hyx_pixel).r; }
)";

char const* const sampleDepth = R"(#version 120
#extension GL_ARB_texture_multisample : require
#extension GL_ARB_sample_shading : require
uniform sampler2DMS hyx_behind;
float behind() { return texelFetch(hyx_behind, ivec2(gl_FragCoord.xy), gl_SampleID).r; }
)";

// Depths have 24 bits; a layer must not come before itself.
char const* const comparison = R"(
void main() {
    if (gl_FragCoord.z >= behind() - 2.0 / 16777216.0)
        discard;
    gl_FragColor = vec4(1.0); // passes tests of opacity
}
)";

void forgetErrors() {
    while (glGetError() != GL_NO_ERROR) {
    }
}

} // namespace

PeeledLayers::PeeledLayers(unsigned int context)
    : m_gl(*osg::GLExtensions::Get(context, true)),
      m_opaque(m_gl),
      m_lastLayer(m_gl),
      m_able(DepthCopy::isPossible(m_gl) && m_gl.isARBOcclusionQuerySupported) {}

bool PeeledLayers::begin(osg::State& state, osg::Viewport const& viewport) {
    m_target = drawnFrame();
    if (!m_able || !m_target.hasColors)
        return false;
    forgetErrors();
    m_able = prepare(state, static_cast<GLsizei>(viewport.x() + viewport.width()),
                     static_cast<GLsizei>(viewport.y() + viewport.height()));
    if (!m_able)
        return false;
    m_opaque.copyFrom(m_target.id);
    m_behind = &m_opaque;
    m_able = glGetError() == GL_NO_ERROR; // windows may have depths of another kind, which cannot be copied
    return m_able;
}

bool PeeledLayers::prepare(osg::State& state, GLsizei width, GLsizei height) {
    m_width = width;
    m_height = height;
    if (m_query == 0)
        m_gl.glGenQueries(1, &m_query);
    if (m_target.samples != m_samples) {
        m_samples = m_target.samples;
        if (!makeProgram(state))
            return false;
    }
    return m_opaque.resize(m_samples, width, height) && m_lastLayer.resize(m_samples, width, height);
}

void PeeledLayers::beginDepths(osg::State& state) {
    glDepthMask(GL_TRUE);
    state.haveAppliedAttribute(osg::StateAttribute::DEPTH);
    glClearDepth(0);
    glClear(GL_DEPTH_BUFFER_BIT);
    glClearDepth(1);
    m_behind->bindTexture(state, behindUnit);
    m_gl.glBeginQuery(GL_SAMPLES_PASSED_ARB, m_query);
}

void PeeledLayers::applyProgram(osg::State& state) const {
    state.applyAttribute(m_program);
    osg::Program::PerContextProgram const& program = *m_program->getPCP(state);
    m_gl.glUniform1i(program.getUniformLocation(osg::Uniform::getNameID("hyx_behind")), behindUnit);
    m_gl.glUniform2f(program.getUniformLocation(osg::Uniform::getNameID("hyx_pixel")), 1.0f / float(m_width),
                     1.0f / float(m_height));
}

bool PeeledLayers::endDepths() {
    m_gl.glEndQuery(GL_SAMPLES_PASSED_ARB);
    GLuint passed = 0;
    m_gl.glGetQueryObjectuiv(m_query, GL_QUERY_RESULT_ARB, &passed);
    if (passed == 0)
        return false;
    m_behind = &m_lastLayer;
    m_lastLayer.copyFrom(m_target.id);
    return true;
}

void PeeledLayers::end(osg::State& state) {
    m_opaque.unbindTexture(state, behindUnit);
    m_opaque.copyTo(m_target.id);
}

bool PeeledLayers::makeProgram(osg::State& state) {
    m_program = new osg::Program;
    m_program->setName("layers");
    m_program->addShader(new osg::Shader(osg::Shader::VERTEX, depthVertices));
    m_program->addShader(
        new osg::Shader(osg::Shader::FRAGMENT, std::string(m_samples > 0 ? sampleDepth : pixelDepth) + comparison));
    state.applyAttribute(m_program);
    return m_program->getPCP(state)->isLinked();
}

} // namespace hyxOSG
