// The ways of frames as lines.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec4f.h"

#include <osg/Geometry>

#include <memory>

namespace hyx {
class Frame;
} // namespace hyx

namespace hyxOSG {

/// Draws the ways of frames as lines, each with its newest points. Frames are referenced while they are followed.
class FrameTrajectoryDrawable : public osg::Geometry {
public:
    /// Each line keeps `numPoints` points (at least 2, else std::invalid_argument).
    explicit FrameTrajectoryDrawable(hyx::UInt numPoints = 100, hyx::Vec4f const& color = hyx::Vec4f(1, 1, 1, 1));
    FrameTrajectoryDrawable(FrameTrajectoryDrawable const& other,
                            osg::CopyOp const& copyOperation = osg::CopyOp::SHALLOW_COPY);

    META_Node(hyxOSG, FrameTrajectoryDrawable)

        /// Follow `frame`. False for null and for one that is followed already.
        bool add(hyx::Frame* frame);

    /// Stop following `frame` and take its line away. False when it is not followed.
    bool remove(hyx::Frame* frame);

    /// The number of frames followed.
    std::size_t getNumFrames() const;

    /// The number of points drawn for all frames together.
    std::size_t getNumPoints() const;

    /// Adds the present position of every frame to its line.
    void update();

    /// Takes all points away; frames stay followed.
    void clear();

protected:
    ~FrameTrajectoryDrawable() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
