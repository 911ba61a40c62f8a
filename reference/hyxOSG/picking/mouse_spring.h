// The spring between the pointer and a body.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/ball_joint.h"

#include <osg/Group>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG::input {

/// Holds one point of a body with a soft joint whose other end is moved. Its stiffness suits the body's mass, and its
/// force is bounded, so that a body caught behind something is not torn through it.
class MouseSpring {
public:
    ~MouseSpring();

    /// Takes hold of a point of the world on a body; only a body moved by forces, in a simulation, can be held.
    bool attach(hyx::RigidBody* body, hyx::Vec3 const& worldPoint);
    void release();
    /// False as soon as the body has left its simulation.
    bool holds() const;

    void setTarget(hyx::Vec3 const& worldPoint);

    hyx::Vec3 target() const { return m_target; }

    /// The held point of the body, in the world.
    hyx::Vec3 heldPoint() const;

private:
    hyx::ref_ptr<hyx::RigidBody> m_body;
    hyx::ref_ptr<hyx::BallJoint> m_joint;
    hyx::Vec3 m_target;
};

/// The picture of a spring: a line between two balls, seen through everything.
class SpringPicture {
public:
    explicit SpringPicture(float radius);

    osg::Node* node() { return m_group; }

    void show(hyx::Vec3 const& held, hyx::Vec3 const& target);
    void hide();

private:
    osg::ref_ptr<osg::Group> m_group;
};

} // namespace hyxOSG::input
