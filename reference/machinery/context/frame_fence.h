// Keeps drawing at most one frame behind the caller.
#pragma once

#include <osg/GLExtensions>

namespace hyxOSG {

/// A fence after each frame, and a wait for the one before: the driver draws while the caller goes on, and frames do
/// not pile up. The context must be current.
class FrameFence {
public:
    /// Marks the end of a frame and waits until the previous one was drawn.
    void endFrame(osg::State& state);

    /// Waits until all that was marked is drawn; also before the context is closed.
    void finish(osg::State& state);

private:
    void wait(osg::GLExtensions& gl);

    GLsync m_previous = nullptr;
};

} // namespace hyxOSG
