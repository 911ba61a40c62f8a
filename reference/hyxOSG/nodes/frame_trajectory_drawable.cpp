#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"

#include "platform/hyx/bodies/frame.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/trajectory_lines.h"

#include <algorithm>
#include <vector>

namespace hyxOSG {

struct FrameTrajectoryDrawable::Impl {
    Impl(hyx::UInt numPoints, hyx::Vec4f const& color) : lines(numPoints), color(toOsg(color)) {}

    static TrajectoryLines::Key keyOf(hyx::Frame const* frame) { return reinterpret_cast<TrajectoryLines::Key>(frame); }

    std::vector<hyx::ref_ptr<hyx::Frame>> frames;
    TrajectoryLines lines;
    osg::Vec4 color;
};

FrameTrajectoryDrawable::FrameTrajectoryDrawable(hyx::UInt numPoints, hyx::Vec4f const& color)
    : m_impl(std::make_unique<Impl>(numPoints, color)) {
    prepareForLines(*this);
}

FrameTrajectoryDrawable::FrameTrajectoryDrawable(FrameTrajectoryDrawable const& other, osg::CopyOp const&)
    : osg::Geometry(), m_impl(std::make_unique<Impl>(*other.m_impl)) {
    prepareForLines(*this);
    m_impl->lines.writeTo(*this);
}

FrameTrajectoryDrawable::~FrameTrajectoryDrawable() = default;

bool FrameTrajectoryDrawable::add(hyx::Frame* frame) {
    if (!frame || std::ranges::find(m_impl->frames, frame, &hyx::ref_ptr<hyx::Frame>::get) != m_impl->frames.end())
        return false;
    m_impl->frames.emplace_back(frame);
    return true;
}

bool FrameTrajectoryDrawable::remove(hyx::Frame* frame) {
    if (std::erase_if(m_impl->frames, [frame](auto const& followed) { return followed.get() == frame; }) == 0)
        return false;
    m_impl->lines.remove(Impl::keyOf(frame));
    m_impl->lines.writeTo(*this);
    return true;
}

std::size_t FrameTrajectoryDrawable::getNumFrames() const {
    return m_impl->frames.size();
}

std::size_t FrameTrajectoryDrawable::getNumPoints() const {
    return m_impl->lines.numPoints();
}

void FrameTrajectoryDrawable::update() {
    for (auto const& frame : m_impl->frames)
        m_impl->lines.add(Impl::keyOf(frame), toOsg(frame->getTranslate()), m_impl->color);
    m_impl->lines.writeTo(*this);
}

void FrameTrajectoryDrawable::clear() {
    m_impl->lines.clear();
    m_impl->lines.writeTo(*this);
}

} // namespace hyxOSG
