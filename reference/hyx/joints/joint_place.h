// Where in the world a joint is made.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace hyx {

/// A place of the world at which a joint is made: a frame there with Z along the axis, seen from each body.
class JointPlace {
public:
    /// Throws std::invalid_argument for a zero axis.
    JointPlace(Vec3 const& worldPoint, Vec3 const& worldAxis);

    /// The frame relative to the body; relative to the world for null.
    ref_ptr<Frame> seenFrom(RigidBody const* body) const;

private:
    AffineMatrix4x4 m_place;
};

} // namespace hyx
