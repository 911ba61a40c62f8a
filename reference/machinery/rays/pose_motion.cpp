// Places between two moments.
#include "reference/machinery/rays/pose_motion.h"

#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

namespace hyx {

Pose Pose::of(Frame const* frame) {
    if (!frame)
        return {};
    RigidBody const* body = nullptr;
    for (Frame const* above = frame; above && !body; above = above->getParent())
        if (auto const* carried = dynamic_cast<BodyFrame const*>(above))
            body = carried->body();
    return of(frame->getMatrix(), body);
}

Pose Pose::of(AffineMatrix4x4 const& place, RigidBody const* body) {
    Pose pose{toBullet(place)};
    if (body)
        pose.center = pose.place.invXform(toBullet(body->getWorldCenterOfMass()));
    return pose;
}

PoseMotion::PoseMotion(Pose const& former, Pose const& present)
    : m_present(present.place),
      m_center(present.center),
      m_from(former.place * present.center),
      m_to(present.place * present.center),
      m_turnedFrom(former.place.getRotation()),
      m_turnedTo(present.place.getRotation()),
      m_moves(!(former.place == present.place)) {
    if (m_turnedFrom.dot(m_turnedTo) < 0)
        m_turnedTo = -m_turnedTo;
}

double PoseMotion::angle() const {
    return m_turnedFrom.angleShortestPath(m_turnedTo);
}

btTransform PoseMotion::at(double share) const {
    btMatrix3x3 const turned(m_turnedFrom.slerp(m_turnedTo, share));
    return btTransform(turned, m_from.lerp(m_to, share) - turned * m_center);
}

} // namespace hyx
