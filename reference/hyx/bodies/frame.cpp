// Follows a frame's parents up to the world, and refuses circles.
#include "platform/hyx/bodies/frame.h"

#include <stdexcept>

namespace hyx {

Frame::Frame(AffineMatrix4x4 const& local, Frame* parent) : m_local(local) {
    setParent(parent);
}

void Frame::setParent(Frame* parent) {
    // One that is nobody's parent closes no ring: long chains grow in no time.
    for (Frame const* above = parent; above && (m_numChildren > 0 || above == this); above = above->getParent())
        if (above == this)
            throw std::invalid_argument("a frame cannot be its own parent, nor that of one of its parents");
    if (parent)
        ++parent->m_numChildren;
    if (m_parent)
        --m_parent->m_numChildren;
    m_parent = parent;
}

Frame::~Frame() {
    // Parents that end with this one do so one after another: each within the other would need stack for all.
    ref_ptr<Frame> next = m_parent;
    setParent(nullptr);
    while (next && next->getReferenceCount() == 1) {
        ref_ptr<Frame> const above = next->m_parent;
        next->setParent(nullptr);
        next = above;
    }
}

AffineMatrix4x4 Frame::getMatrix() const {
    AffineMatrix4x4 matrix;
    AffineMatrix4x4 place;
    for (Frame const* frame = this; frame; frame = frame->getParent()) {
        if (frame->findPlace(place))
            return matrix * place;
        matrix = matrix * frame->m_local;
    }
    return matrix;
}

bool Frame::findPlace(AffineMatrix4x4&) const {
    return false;
}

} // namespace hyx
