// Copies depth buffers, and holds the program that compares with them.
#include "reference/machinery/shading/peeled_layers.h"

#include <osg/FrameBufferObject>
#include <osg/Texture2DMultisample>

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

GLuint boundFrameBuffer(GLenum which) {
    GLint bound = 0;
    glGetIntegerv(which, &bound);
    return static_cast<GLuint>(bound);
}

GLsizei boundSamples() {
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES_ARB, &samples);
    return samples;
}

void forgetErrors() {
    while (glGetError() != GL_NO_ERROR) {
    }
}

} // namespace

PeeledLayers::PeeledLayers(unsigned int context) : m_gl(*osg::GLExtensions::Get(context, true)) {
    m_able = m_gl.isFrameBufferObjectSupported && m_gl.isPackedDepthStencilSupported && m_gl.glBlitFramebuffer &&
             m_gl.isARBOcclusionQuerySupported && m_gl.isGlslSupported;
}

bool PeeledLayers::begin(osg::State& state, osg::Viewport const& viewport) {
    GLint drawn = GL_NONE;
    glGetIntegerv(GL_DRAW_BUFFER, &drawn);
    m_target = boundFrameBuffer(GL_DRAW_FRAMEBUFFER_BINDING_EXT);
    if (!m_able || drawn == GL_NONE || boundFrameBuffer(GL_READ_FRAMEBUFFER_BINDING_EXT) != m_target)
        return false;
    auto const width = static_cast<GLsizei>(viewport.x() + viewport.width());
    auto const height = static_cast<GLsizei>(viewport.y() + viewport.height());
    GLsizei const samples = boundSamples();
    forgetErrors();
    if (samples != m_samples) {
        m_samples = samples;
        m_width = 0;
        m_able = makeProgram(state);
    }
    if (m_able && (width != m_width || height != m_height)) {
        m_width = width;
        m_height = height;
        m_able = makeCopies();
    }
    if (!m_able)
        return false;
    copyDepths(m_target, m_frameBuffers[OPAQUE_DEPTHS]);
    m_behind = OPAQUE_DEPTHS;
    m_able = glGetError() == GL_NO_ERROR;
    return m_able;
}

void PeeledLayers::beginDepths(osg::State& state) {
    glDepthMask(GL_TRUE);
    state.haveAppliedAttribute(osg::StateAttribute::DEPTH);
    glClearDepth(0);
    glClear(GL_DEPTH_BUFFER_BIT);
    glClearDepth(1);
    state.setActiveTextureUnit(behindUnit);
    glBindTexture(m_samples > 0 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D, m_textures[m_behind]);
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
    m_behind = LAST_LAYER;
    copyDepths(m_target, m_frameBuffers[LAST_LAYER]);
    return true;
}

void PeeledLayers::end(osg::State& state) {
    state.setActiveTextureUnit(behindUnit);
    glBindTexture(m_samples > 0 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D, 0);
    copyDepths(m_frameBuffers[OPAQUE_DEPTHS], m_target);
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

bool PeeledLayers::makeCopies() {
    GLenum const target = m_samples > 0 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D;
    if (m_query == 0) {
        m_gl.glGenQueries(1, &m_query);
        m_gl.glGenFramebuffers(NUM_COPIES, m_frameBuffers);
    }
    if (m_textures[0] != 0)
        glDeleteTextures(NUM_COPIES, m_textures);
    glGenTextures(NUM_COPIES, m_textures);
    bool complete = true;
    for (int copy = 0; copy < NUM_COPIES; ++copy) {
        glBindTexture(target, m_textures[copy]);
        if (m_samples > 0) {
            m_gl.glTexImage2DMultisample(target, m_samples, GL_DEPTH24_STENCIL8_EXT, m_width, m_height, GL_TRUE);
        } else {
            glTexImage2D(target, 0, GL_DEPTH24_STENCIL8_EXT, m_width, m_height, 0, GL_DEPTH_STENCIL_EXT,
                         GL_UNSIGNED_INT_24_8_EXT, nullptr);
            glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        }
        m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, m_frameBuffers[copy]);
        m_gl.glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT, target, m_textures[copy], 0);
        m_gl.glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER_EXT, GL_STENCIL_ATTACHMENT_EXT, target, m_textures[copy], 0);
        glDrawBuffer(GL_NONE);
        complete = complete && m_gl.glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
    }
    m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, m_target);
    glBindTexture(target, 0);
    return complete;
}

void PeeledLayers::copyDepths(GLuint from, GLuint to) const {
    m_gl.glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, from);
    m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, to);
    // Stencil values, which stay the same, share memory with depths: all of it is copied faster than a part.
    m_gl.glBlitFramebuffer(0, 0, m_width, m_height, 0, 0, m_width, m_height,
                           GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT, GL_NEAREST);
    m_gl.glBindFramebuffer(GL_FRAMEBUFFER_EXT, m_target);
}

} // namespace hyxOSG
