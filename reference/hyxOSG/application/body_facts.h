// What pushes a body: the sums that the window and the remote page show.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <string>
#include <vector>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// The force in newtons that another body, or a geometry without one, put on a body in the last step, at all points
/// together.
struct ContactFacts {
    std::string name; ///< of the other body; empty where it has none
    hyx::Vec3 force;
};

std::vector<ContactFacts> contactFacts(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation);

/// The force and torque that a joint put on a body in the last step, in the world.
struct JointFacts {
    std::string name;
    hyx::Vec3 force, torque;
};

std::vector<JointFacts> jointFacts(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation);

} // namespace hyxOSG
