// Keeps depths in a texture, filled from frame buffers of the same format.
#include "reference/machinery/shading/depth_copy.h"

#include <osg/FrameBufferObject>
#include <osg/Texture2DMultisample>

namespace hyxOSG {
namespace {

GLint valueOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

} // namespace

bool DepthCopy::isPossible(osg::GLExtensions const& gl) {
    return gl.isFrameBufferObjectSupported && gl.isPackedDepthStencilSupported && gl.glBlitFramebuffer &&
           gl.isGlslSupported;
}

GLenum DepthCopy::textureKind() const {
    return m_samples > 0 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D;
}

bool DepthCopy::resize(GLsizei samples, GLsizei width, GLsizei height) {
    if (m_texture != 0 && samples == m_samples && width == m_width && height == m_height)
        return true;
    GLint const before = valueOf(GL_DRAW_FRAMEBUFFER_BINDING_EXT);
    if (m_frameBuffer == 0)
        m_gl.glGenFramebuffers(1, &m_frameBuffer);
    if (m_texture != 0)
        glDeleteTextures(1, &m_texture);
    glGenTextures(1, &m_texture);
    m_samples = samples;
    m_width = width;
    m_height = height;
    GLenum const kind = textureKind();
    glBindTexture(kind, m_texture);
    if (m_samples > 0) {
        m_gl.glTexImage2DMultisample(kind, m_samples, GL_DEPTH24_STENCIL8_EXT, width, height, GL_TRUE);
    } else {
        glTexImage2D(kind, 0, GL_DEPTH24_STENCIL8_EXT, width, height, 0, GL_DEPTH_STENCIL_EXT, GL_UNSIGNED_INT_24_8_EXT,
                     nullptr);
        for (GLenum const filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
            glTexParameteri(kind, filter, GL_NEAREST);
        for (GLenum const edge : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
            glTexParameteri(kind, edge, GL_CLAMP_TO_EDGE);
    }
    m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, m_frameBuffer);
    for (GLenum const attachment : {GL_DEPTH_ATTACHMENT_EXT, GL_STENCIL_ATTACHMENT_EXT})
        m_gl.glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER_EXT, attachment, kind, m_texture, 0);
    glDrawBuffer(GL_NONE);
    bool const complete = m_gl.glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
    m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, static_cast<GLuint>(before));
    glBindTexture(kind, 0);
    return complete;
}

void DepthCopy::copy(GLuint from, GLuint to, GLuint target) const {
    m_gl.glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, from);
    m_gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, to);
    // Stencil values share memory with depths: all of it is copied faster than a part.
    m_gl.glBlitFramebuffer(0, 0, m_width, m_height, 0, 0, m_width, m_height,
                           GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT, GL_NEAREST);
    m_gl.glBindFramebuffer(GL_FRAMEBUFFER_EXT, target);
}

void DepthCopy::bindTexture(osg::State& state, unsigned int unit) const {
    state.setActiveTextureUnit(unit);
    glBindTexture(textureKind(), m_texture);
}

void DepthCopy::unbindTexture(osg::State& state, unsigned int unit) const {
    state.setActiveTextureUnit(unit);
    glBindTexture(textureKind(), 0);
}

DrawnFrame drawnFrame() {
    DrawnFrame frame;
    frame.id = static_cast<GLuint>(valueOf(GL_DRAW_FRAMEBUFFER_BINDING_EXT));
    frame.samples = valueOf(GL_SAMPLES_ARB);
    frame.hasColors =
        valueOf(GL_DRAW_BUFFER) != GL_NONE && static_cast<GLuint>(valueOf(GL_READ_FRAMEBUFFER_BINDING_EXT)) == frame.id;
    return frame;
}

} // namespace hyxOSG
