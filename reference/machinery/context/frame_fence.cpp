// Fence objects of the driver, where it has them.
#include "reference/machinery/context/frame_fence.h"

#include <osg/State>

namespace hyxOSG {

void FrameFence::endFrame(osg::State& state) {
    osg::GLExtensions* gl = state.get<osg::GLExtensions>();
    if (!gl || !gl->glFenceSync || !gl->glClientWaitSync) {
        glFinish();
        return;
    }
    GLsync fence = gl->glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
    glFlush();
    wait(*gl);
    m_previous = fence;
}

void FrameFence::finish(osg::State& state) {
    if (osg::GLExtensions* gl = state.get<osg::GLExtensions>())
        wait(*gl);
}

void FrameFence::wait(osg::GLExtensions& gl) {
    if (!m_previous)
        return;
    constexpr GLuint64 nanosecondsAtMost = 2'000'000'000;
    gl.glClientWaitSync(m_previous, GL_SYNC_FLUSH_COMMANDS_BIT, nanosecondsAtMost);
    gl.glDeleteSync(m_previous);
    m_previous = nullptr;
}

} // namespace hyxOSG
