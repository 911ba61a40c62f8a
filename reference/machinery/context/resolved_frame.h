// Reading pictures that have several samples a pixel.
#pragma once

#include <osg/State>

namespace hyxOSG {

/// While it lives, `osg::Image::readPixels` finds the picture of the current frame buffer with its samples mixed; the
/// driver alone may hand out one sample of each pixel. Pictures without samples are read where they are.
class ResolvedFrame {
public:
    ResolvedFrame(osg::State& state, int width, int height);
    ~ResolvedFrame();

    /// Whether the samples were mixed into a frame buffer of GL_RGBA8, which is read now.
    bool isCopy() const { return m_frameBuffer != 0; }

    ResolvedFrame(ResolvedFrame const&) = delete;
    ResolvedFrame& operator=(ResolvedFrame const&) = delete;

private:
    osg::State& m_state;
    GLint m_before = 0;
    GLuint m_frameBuffer = 0; ///< 0 when there is nothing to mix
    GLuint m_colors = 0;
};

} // namespace hyxOSG
