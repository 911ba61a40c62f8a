// Sees the frame of a joint from each of its bodies.
#include "reference/hyx/joints/joint_place.h"

#include "reference/hyx/values/number_checks.h"

#include <stdexcept>

namespace hyx {

JointPlace::JointPlace(Vec3 const& worldPoint, Vec3 const& worldAxis) {
    requireFinite(worldPoint, "the point of a joint");
    requireFinite(worldAxis, "the axis of a joint");
    if (worldAxis.length2() == 0)
        throw std::invalid_argument("a joint needs an axis other than zero");
    m_place = AffineMatrix4x4(Quat(Vec3(0, 0, 1), worldAxis), worldPoint);
}

ref_ptr<Frame> JointPlace::seenFrom(RigidBody const* body) const {
    return new Frame(body ? m_place * body->getTransform().inverse() : m_place);
}

} // namespace hyx
