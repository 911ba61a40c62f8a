// How something moved from one moment to the next.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"

#include <LinearMath/btTransform.h>

namespace hyx {

/// A place, and the point about which what stands there turns while it moves on: a body's centre of mass.
struct Pose {
    btTransform place = btTransform::getIdentity();
    btVector3 center{0, 0, 0}; ///< in the coordinates of `place`

    /// Of a frame, which turns about the body that carries it; null stands at the world's origin.
    static Pose of(Frame const* frame);
    /// Of what moves with a body.
    static Pose of(AffineMatrix4x4 const& place, RigidBody const* body);
};

/// From one pose to the next as an integrator moves bodies: the centre straight, the rotation at one rate.
class PoseMotion {
public:
    PoseMotion() = default;
    PoseMotion(Pose const& former, Pose const& present);

    bool moves() const { return m_moves; }

    btTransform const& present() const { return m_present; }

    /// How far it turns, in radians.
    double angle() const;
    /// The place at a share of the time, 0 to 1.
    btTransform at(double share) const;

private:
    btTransform m_present = btTransform::getIdentity();
    btVector3 m_center{0, 0, 0}; ///< local
    btVector3 m_from{0, 0, 0}, m_to{0, 0, 0};
    btQuaternion m_turnedFrom{0, 0, 0, 1}, m_turnedTo{0, 0, 0, 1};
    bool m_moves = false;
};

} // namespace hyx
