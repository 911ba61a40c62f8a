// A frame buffer with several samples a pixel, drawn into instead of an off-screen window's own.
#pragma once

#include <osg/State>

namespace hyxOSG {

/// A driver mixes the samples of a window's own buffer at every flush, which costs as much as a simple picture. Here
/// they are mixed when somebody reads, by `ResolvedFrame`. Made, resized and destroyed while its context is current.
class SampledFrame {
public:
    /// With as many samples as the driver has, at most `samples`. The driver has such buffers: see `hasSampledFrames`.
    SampledFrame(osg::State& state, int samples, bool alpha, int width, int height);
    ~SampledFrame();
    SampledFrame(SampledFrame const&) = delete;
    SampledFrame& operator=(SampledFrame const&) = delete;

    void resize(int width, int height);
    void bind() const;

    GLuint id() const { return m_frameBuffer; }

private:
    osg::GLExtensions const& m_gl;
    GLsizei m_samples;
    GLenum m_colorFormat;
    int m_width = 0, m_height = 0;
    GLuint m_frameBuffer = 0, m_colors = 0, m_depths = 0;
};

/// Whether the driver of `state` can draw with samples into buffers that are not a window's.
bool hasSampledFrames(osg::State& state);

} // namespace hyxOSG
