// Mixes samples by a copy into a frame buffer without them.
#include "reference/machinery/context/resolved_frame.h"

#include <osg/FrameBufferObject>
#include <osg/GLExtensions>
#include <osg/Multisample>

namespace hyxOSG {

ResolvedFrame::ResolvedFrame(osg::State& state, int width, int height) : m_state(state) {
    auto const& gl = *state.get<osg::GLExtensions>();
    GLint drawn = 0, mixes = 0;
    if (!gl.isFrameBufferObjectSupported || !gl.glBlitFramebuffer)
        return;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &m_before);
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING_EXT, &drawn);
    glGetIntegerv(GL_SAMPLE_BUFFERS_ARB, &mixes); // of the frame buffer that is drawn into
    if (mixes == 0 || drawn != m_before)
        return;
    gl.glGenFramebuffers(1, &m_frameBuffer);
    gl.glGenRenderbuffers(1, &m_colors);
    gl.glBindRenderbuffer(GL_RENDERBUFFER_EXT, m_colors);
    gl.glRenderbufferStorage(GL_RENDERBUFFER_EXT, GL_RGBA8, width, height);
    gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, m_frameBuffer);
    gl.glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_RENDERBUFFER_EXT, m_colors);
    gl.glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, static_cast<GLuint>(drawn));
    gl.glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, m_frameBuffer);
}

ResolvedFrame::~ResolvedFrame() {
    if (!m_frameBuffer)
        return;
    auto const& gl = *m_state.get<osg::GLExtensions>();
    gl.glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, static_cast<GLuint>(m_before));
    gl.glDeleteFramebuffers(1, &m_frameBuffer);
    gl.glDeleteRenderbuffers(1, &m_colors);
}

} // namespace hyxOSG
