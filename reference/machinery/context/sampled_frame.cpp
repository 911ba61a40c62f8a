// Colours, depths and stencil of the frame buffer with samples.
#include "reference/machinery/context/sampled_frame.h"

#include <osg/FrameBufferObject>
#include <osg/GLExtensions>

#include <algorithm>

namespace hyxOSG {
namespace {

GLint mostSamples() {
    constexpr GLenum maxSamples = 0x8D57; // GL_MAX_SAMPLES, which the scene-graph library's headers lack
    GLint most = 0;
    glGetIntegerv(maxSamples, &most);
    return most;
}

} // namespace

bool hasSampledFrames(osg::State& state) {
    auto const& gl = *osg::GLExtensions::Get(state.getContextID(), true);
    return gl.isFrameBufferObjectSupported && gl.isPackedDepthStencilSupported && gl.glBlitFramebuffer &&
           gl.glRenderbufferStorageMultisample && mostSamples() > 0;
}

SampledFrame::SampledFrame(osg::State& state, int samples, bool alpha, int width, int height)
    : m_gl(*osg::GLExtensions::Get(state.getContextID(), true)),
      m_samples(std::min<GLsizei>(samples, mostSamples())),
      m_colorFormat(alpha ? GL_RGBA8 : GL_RGB8) {
    m_gl.glGenFramebuffers(1, &m_frameBuffer);
    m_gl.glGenRenderbuffers(1, &m_colors);
    m_gl.glGenRenderbuffers(1, &m_depths);
    resize(width, height);
    bind();
    m_gl.glFramebufferRenderbuffer(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_RENDERBUFFER_EXT, m_colors);
    for (GLenum const attachment : {GL_DEPTH_ATTACHMENT_EXT, GL_STENCIL_ATTACHMENT_EXT})
        m_gl.glFramebufferRenderbuffer(GL_FRAMEBUFFER_EXT, attachment, GL_RENDERBUFFER_EXT, m_depths);
}

SampledFrame::~SampledFrame() {
    m_gl.glDeleteFramebuffers(1, &m_frameBuffer);
    m_gl.glDeleteRenderbuffers(1, &m_colors);
    m_gl.glDeleteRenderbuffers(1, &m_depths);
}

void SampledFrame::resize(int width, int height) {
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    m_gl.glBindRenderbuffer(GL_RENDERBUFFER_EXT, m_colors);
    m_gl.glRenderbufferStorageMultisample(GL_RENDERBUFFER_EXT, m_samples, m_colorFormat, width, height);
    m_gl.glBindRenderbuffer(GL_RENDERBUFFER_EXT, m_depths);
    m_gl.glRenderbufferStorageMultisample(GL_RENDERBUFFER_EXT, m_samples, GL_DEPTH24_STENCIL8_EXT, width, height);
}

void SampledFrame::bind() const {
    m_gl.glBindFramebuffer(GL_FRAMEBUFFER_EXT, m_frameBuffer);
}

} // namespace hyxOSG
