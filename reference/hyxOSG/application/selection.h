// The body that a user looks into.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <osg/Group>

#include <string>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// One body with an outline, or none.
class Selection {
public:
    /// The visuals of bodies are below `root`, which outlives the selection.
    explicit Selection(osg::Group* root) : m_root(root) {}

    /// Null for none.
    void select(hyx::RigidBody* body);

    /// Null where there is none, or where it has left `simulation`, which ends the selection.
    hyx::RigidBody* in(hyxSDK::Simulation const& simulation);

    /// Name, mass, pose, velocities, and the forces at contacts and joints, a line each, all lines of one length; empty
    /// for none.
    std::string describe(hyxSDK::Simulation const& simulation);

private:
    void setOutline(bool on);

    osg::Group* m_root;
    hyx::ref_ptr<hyx::RigidBody> m_body;
};

} // namespace hyxOSG
