// Springs, targets and efforts of joints.
#include "reference/hyxtavlang/joint_drives.h"

#include "platform/hyx/bodies/rigid_body.h"

#include <algorithm>
#include <cmath>

namespace hyxtavlang {

JointDrive::JointDrive(hyx::ref_ptr<hyx::Constraint1DOF> constraint,
                       tavlang::Robotics::Joints::SingleAxisJoint const& given)
    : joint(std::move(constraint)),
      slides(dynamic_cast<tavlang::Robotics::Joints::PrismaticJoint const*>(&given)),
      start(given.start),
      m_stiffness(given.stiffness),
      m_rest(given.restPosition),
      m_lowerEffort(-given.maximumEffort),
      m_upperEffort(given.maximumEffort) {
    hold();
}

void JointDrive::add(tavlang::Control::Actuator const& actuator) {
    double const gear = actuator.gear;
    if (auto const* position = dynamic_cast<tavlang::Control::PositionActuator const*>(&actuator)) {
        m_gain += gear * gear * actuator.gain;
        joint->setViscosity(joint->getViscosity() + gear * gear * position->damping);
    } else if (dynamic_cast<tavlang::Control::VelocityActuator const*>(&actuator)) {
        joint->setViscosity(joint->getViscosity() + gear * gear * actuator.gain);
    }
    double const bounds[] = {gear * actuator.lowerForce, gear * actuator.upperForce};
    m_lowerEffort = std::max(m_lowerEffort, std::min(bounds[0], bounds[1]));
    m_upperEffort = std::min(m_upperEffort, std::max(bounds[0], bounds[1]));
    hold();
}

void JointDrive::setTarget(double target) {
    if (std::isnan(target) && std::isnan(m_target))
        return; // another listener may hold the joint
    m_target = target;
    hold();
}

/// The joint's lock is its spring and its drive together: two springs at one joint are one, between their ends.
void JointDrive::hold() {
    hyx::Lock1D& lock = *joint->getLock1D();
    bool const held = !std::isnan(m_target);
    lock.setEnable(held || m_stiffness > 0);
    if (!lock.isEnabled())
        return;
    if (held && m_gain == 0) {
        lock.setPosition(m_target - start);
        lock.setCompliance(0);
        lock.setForceRange(hyx::RangeReal(m_lowerEffort, m_upperEffort));
        return;
    }
    double const gain = held ? m_gain : 0;
    double const stiffness = m_stiffness + gain;
    lock.setPosition((m_stiffness * m_rest + (held ? gain * m_target : 0)) / stiffness - start);
    lock.setCompliance(1 / stiffness);
    lock.setForceRange(held ? hyx::RangeReal(m_lowerEffort, m_upperEffort) : hyx::RangeReal());
}

void JointDrive::setEffort(double effort) {
    m_effort = std::clamp(effort, m_lowerEffort, m_upperEffort);
    for (hyx::UInt side : {0u, 1u})
        if (hyx::RigidBody* const body = joint->getBodyAt(side); body && effort != 0)
            body->setVelocity(body->getVelocity()); // wakes it
}

double JointDrive::getEffort() const {
    double effort = m_effort;
    if (joint->getMotor1D()->isEnabled())
        effort += joint->getMotor1D()->getCurrentForce();
    if (joint->getLock1D()->isEnabled())
        effort += joint->getLock1D()->getCurrentForce();
    return effort;
}

void JointDrive::apply() const {
    if (m_effort == 0)
        return;
    constexpr hyx::UInt child = 0, parent = 1;
    hyx::AffineMatrix4x4 const frame = joint->getAttachmentTransform(parent);
    hyx::Vec3 const effort = frame.transformVector(hyx::Vec3(0, 0, 1)) * m_effort;
    hyx::Vec3 const place = joint->getAttachmentTransform(child).getTranslate();
    for (hyx::UInt side : {child, parent}) {
        hyx::RigidBody* const body = joint->getBodyAt(side);
        if (!body)
            continue;
        hyx::Vec3 const share = side == child ? effort : effort * -1.0;
        if (slides)
            body->addForceAtPosition(share, place);
        else
            body->addTorque(share);
    }
}

} // namespace hyxtavlang
