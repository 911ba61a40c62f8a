// Sums up contacts and joints.
#include "reference/hyxOSG/application/body_facts.h"

#include "platform/hyx/joints/constraint.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"

#include <algorithm>

namespace hyxOSG {

std::vector<ContactFacts> contactFacts(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation) {
    std::vector<ContactFacts> facts;
    std::vector<hyx::RigidBody const*> others;
    for (auto const& contact : simulation.getSpace()->getGeometryContacts())
        for (hyx::UInt side : {0, 1}) {
            if (contact.getNumPoints() == 0 || contact.getRigidBody(side) != &body)
                continue;
            hyx::RigidBody const* other = contact.getRigidBody(1 - side);
            auto const place = std::ranges::find(others, other) - others.begin();
            if (size_t(place) == others.size()) {
                others.push_back(other);
                facts.push_back({other ? std::string(other->getName()) : "", {}});
            }
            hyx::Vec3 const onSecond = contact.getForce();
            facts[size_t(place)].force += side == 1 ? onSecond : -onSecond;
        }
    return facts;
}

std::vector<JointFacts> jointFacts(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation) {
    std::vector<JointFacts> facts;
    for (auto const& joint : simulation.getConstraints())
        for (hyx::UInt side : {0, 1})
            if (joint->getBodyAt(side) == &body) {
                JointFacts found{std::string(joint->getName()), {}, {}};
                joint->getLastForce(side, found.force, found.torque);
                facts.push_back(found);
            }
    return facts;
}

} // namespace hyxOSG
