// Follows a frame's parents up to the world, and refuses circles.
#include "platform/hyx/bodies/frame.h"

#include <stdexcept>

namespace hyx {

Frame::Frame(AffineMatrix4x4 const& local, Frame* parent) : m_local(local), m_parent(parent) {}

void Frame::setParent(Frame* parent) {
    for (Frame const* above = parent; above; above = above->getParent())
        if (above == this)
            throw std::invalid_argument("a frame cannot be its own parent, nor that of one of its parents");
    m_parent = parent;
}

AffineMatrix4x4 Frame::getMatrix() const {
    return m_parent ? m_local * m_parent->getMatrix() : m_local;
}

} // namespace hyx
