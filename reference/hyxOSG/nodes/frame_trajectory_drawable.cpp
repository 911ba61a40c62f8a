// Records where frames were, and shows it as lines.
#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"

#include "platform/hyx/bodies/frame.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/trajectory_lines.h"

#include <algorithm>
#include <vector>

namespace hyxOSG {

struct FrameTrajectoryDrawable::Implementation {
    Implementation(hyx::UInt numPoints, hyx::Vec4f const& color)
        : lines(numPoints), color(toOsg(requireColor(color))) {}

    static TrajectoryLines::Key keyOf(hyx::Frame const* frame) { return reinterpret_cast<TrajectoryLines::Key>(frame); }

    std::vector<hyx::ref_ptr<hyx::Frame>> frames;
    TrajectoryLines lines;
    osg::Vec4 color;
};

FrameTrajectoryDrawable::FrameTrajectoryDrawable(hyx::UInt numPoints, hyx::Vec4f const& color)
    : m_implementation(std::make_unique<Implementation>(numPoints, color)) {
    prepareForLines(*this);
}

FrameTrajectoryDrawable::FrameTrajectoryDrawable(FrameTrajectoryDrawable const& other, osg::CopyOp const&)
    : osg::Geometry(), m_implementation(std::make_unique<Implementation>(*other.m_implementation)) {
    prepareForLines(*this);
    m_implementation->lines.writeTo(*this);
}

FrameTrajectoryDrawable::~FrameTrajectoryDrawable() = default;

bool FrameTrajectoryDrawable::add(hyx::Frame* frame) {
    if (!frame || std::ranges::find(m_implementation->frames, frame, &hyx::ref_ptr<hyx::Frame>::get) !=
                      m_implementation->frames.end())
        return false;
    m_implementation->frames.emplace_back(frame);
    return true;
}

bool FrameTrajectoryDrawable::remove(hyx::Frame* frame) {
    if (std::erase_if(m_implementation->frames, [frame](auto const& followed) { return followed.get() == frame; }) == 0)
        return false;
    m_implementation->lines.remove(Implementation::keyOf(frame));
    m_implementation->lines.writeTo(*this);
    return true;
}

std::size_t FrameTrajectoryDrawable::getNumFrames() const {
    return m_implementation->frames.size();
}

std::size_t FrameTrajectoryDrawable::getNumPoints() const {
    return m_implementation->lines.numPoints();
}

void FrameTrajectoryDrawable::update() {
    for (auto const& frame : m_implementation->frames)
        m_implementation->lines.add(Implementation::keyOf(frame), toOsg(frame->getTranslate()),
                                    m_implementation->color);
    m_implementation->lines.writeTo(*this);
}

void FrameTrajectoryDrawable::clear() {
    m_implementation->lines.clear();
    m_implementation->lines.writeTo(*this);
}

} // namespace hyxOSG
