// A copy of a depth buffer, which programs can read.
#pragma once

#include <osg/GLExtensions>
#include <osg/State>

namespace hyxOSG {

/// Belongs to one graphics context, which is current whenever it is used, and ends with it.
class DepthCopy {
public:
    explicit DepthCopy(osg::GLExtensions const& gl) : m_gl(gl) {}

    static bool isPossible(osg::GLExtensions const& gl);

    /// \param samples of each pixel; 0 for copies of one sample, also of buffers that have more
    /// \return false when the driver has no such buffers
    bool resize(GLsizei samples, GLsizei width, GLsizei height);

    /// Both leave `target` bound.
    void copyFrom(GLuint target) const { copy(target, m_frameBuffer, target); }

    void copyTo(GLuint target) const { copy(m_frameBuffer, target, target); }

    void bindTexture(osg::State& state, unsigned int unit) const;
    void unbindTexture(osg::State& state, unsigned int unit) const;

private:
    void copy(GLuint from, GLuint to, GLuint target) const;
    GLenum textureKind() const;

    osg::GLExtensions const& m_gl;
    GLsizei m_samples = 0, m_width = 0, m_height = 0;
    GLuint m_frameBuffer = 0, m_texture = 0;
};

/// The frame buffer that is drawn into, with its colours; none when there are no colours or it is not the one that is
/// read from.
struct DrawnFrame {
    bool hasColors = false;
    GLuint id = 0;
    GLsizei samples = 0;
};

DrawnFrame drawnFrame();

} // namespace hyxOSG
