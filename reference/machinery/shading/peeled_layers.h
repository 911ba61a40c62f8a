// Keeps copies of depths, by which surfaces that one sees through are drawn layer by layer.
#pragma once

#include "reference/machinery/shading/depth_copy.h"

#include <osg/GLExtensions>
#include <osg/Program>
#include <osg/State>
#include <osg/Viewport>

namespace hyxOSG {

/// The depth buffers beside the one that is drawn into, one of each for a graphics context. Layers are taken from the
/// farthest to the nearest:
///
/// depths are drawn between `beginDepths` and `endDepths`, then colours where depths are equal.
/// Samples of a pixel are told apart, so that edges stay smooth. Found by `osg::get<PeeledLayers>(context)`.
class PeeledLayers : public osg::Referenced {
public:
    explicit PeeledLayers(unsigned int context);

    /// Copies the depths of what is opaque. False when the driver cannot; then nothing has changed.
    bool begin(osg::State& state, osg::Viewport const& viewport);

    /// Makes the depth buffer ready for the next layer, and counts what is drawn until `endDepths`.
    void beginDepths(osg::State& state);

    /// Applies the program that leaves the depths of what lies before the last layer alone.
    void applyProgram(osg::State& state) const;

    /// Whether the layer holds anything.
    bool endDepths();

    /// Puts the depths of what is opaque back.
    void end(osg::State& state);

private:
    bool prepare(osg::State& state, GLsizei width, GLsizei height);
    bool makeProgram(osg::State& state);

    osg::GLExtensions const& m_gl;
    osg::ref_ptr<osg::Program> m_program;
    DrawnFrame m_target;
    GLsizei m_samples = -1; ///< of the program
    GLsizei m_width = 0, m_height = 0;
    DepthCopy m_opaque, m_lastLayer;
    DepthCopy const* m_behind = &m_opaque;
    GLuint m_query = 0;
    bool m_able = true;
};

} // namespace hyxOSG
