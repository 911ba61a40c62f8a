// Reads the motion of the point of a body that an observer rides on.
#include "platform/hyx/bodies/observer_frame.h"

#include "platform/hyx/bodies/rigid_body.h"

namespace hyx {

ObserverFrame::ObserverFrame() = default;

ObserverFrame::ObserverFrame(RigidBody* body, AffineMatrix4x4 const& local) : Frame(local), m_body(body) {}

ObserverFrame::ObserverFrame(Name const& name, RigidBody* body, AffineMatrix4x4 const& local)
    : ObserverFrame(body, local) {
    setName(name);
}

ObserverFrame::~ObserverFrame() = default;

void ObserverFrame::attachTo(RigidBody* body) {
    m_body = body;
}

RigidBody* ObserverFrame::getRigidBody() const {
    return m_body.get();
}

bool ObserverFrame::findPlace(AffineMatrix4x4& place) const {
    place = m_body ? getLocalMatrix() * m_body->getTransform() : getLocalMatrix();
    return true;
}

Vec3 ObserverFrame::getVelocity() const {
    return m_body ? m_body->getPointVelocity(getTranslate()) : Vec3();
}

Vec3 ObserverFrame::getAngularVelocity() const {
    return m_body ? m_body->getAngularVelocity() : Vec3();
}

} // namespace hyx
