// Looks into a simulation for the remote page.
#include "reference/hyxOSG/application/inspector.h"

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/body_facts.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

using nlohmann::json;

json numbers(hyx::Vec3 const& vector) {
    return {vector.x, vector.y, vector.z};
}

/// JSON has no infinity.
json finite(double number) {
    return std::isfinite(number) ? json(number) : json();
}

template <class Each>
void eachNode(hyx::RigidBody const& body, osg::Group* root, Each const& each) {
    for (auto const& geometry : body.getGeometries())
        if (GeometryNode* node = findGeometryNode(geometry.get(), root))
            each(*node);
}

bool isDrawn(hyx::RigidBody const& body, osg::Group* root) {
    bool drawn = false;
    eachNode(body, root, [&](GeometryNode const& node) { drawn = drawn || node.getNodeMask() != 0; });
    return drawn;
}

json jointsOf(hyxSDK::Simulation const& simulation) {
    json joints = json::array();
    auto const& constraints = simulation.getConstraints();
    for (size_t place = 0; place < constraints.size(); ++place)
        if (auto const* joint = dynamic_cast<hyx::Constraint1DOF const*>(constraints[place].get())) {
            hyx::RangeReal const range = joint->getRange1D()->getRange();
            bool const bound = joint->getRange1D()->isEnabled();
            joints.push_back({{"place", place},
                              {"name", std::string(joint->getName())},
                              {"position", finite(joint->getAngle())},
                              {"speed", finite(joint->getCurrentSpeed())},
                              {"lower", bound ? finite(range.lower()) : json()},
                              {"upper", bound ? finite(range.upper()) : json()},
                              {"held", joint->getLock1D()->isEnabled()}});
        }
    return joints;
}

json forcesOn(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation) {
    json contacts = json::array(), joints = json::array();
    for (ContactFacts const& contact : contactFacts(body, simulation))
        contacts.push_back({{"with", contact.name}, {"force", finite(contact.force.length())}});
    for (JointFacts const& joint : jointFacts(body, simulation))
        joints.push_back(
            {{"name", joint.name}, {"force", finite(joint.force.length())}, {"torque", finite(joint.torque.length())}});
    return {{"contacts", contacts}, {"joints", joints}};
}

} // namespace

bool Inspector::follow(json const& message) {
    std::string const what = message.value("do", "");
    if (what == "select") {
        m_application->setSelection(bodyAt(message.value("body", json())));
    } else if (what == "visible") {
        show(message);
    } else if (what == "joint") {
        drive(message);
    } else {
        return false;
    }
    return true;
}

hyx::RigidBody* Inspector::bodyAt(json const& place) const {
    if (place.is_null())
        return nullptr;
    auto const& bodies = m_application->getSimulation()->getRigidBodies();
    if (!place.is_number_unsigned() || place.get<size_t>() >= bodies.size())
        throw std::invalid_argument("there is no such body");
    return bodies[place.get<size_t>()].get();
}

void Inspector::show(json const& message) {
    hyx::RigidBody* body = bodyAt(message.value("body", json()));
    bool const on = message.value("on", true);
    if (body)
        eachNode(*body, m_application->getRoot(), [on](GeometryNode& node) { node.setNodeMask(on ? ~0u : 0u); });
}

void Inspector::drive(json const& message) {
    auto const& constraints = m_application->getSimulation()->getConstraints();
    json const place = message.value("joint", json());
    auto* joint = place.is_number_unsigned() && place.get<size_t>() < constraints.size()
                      ? dynamic_cast<hyx::Constraint1DOF*>(constraints[place.get<size_t>()].get())
                      : nullptr;
    if (!joint)
        throw std::invalid_argument("there is no such joint");
    json const position = message.value("position", json());
    if (position.is_number())
        joint->getLock1D()->setPosition(position.get<double>());
    joint->getLock1D()->setEnable(position.is_number());
}

json Inspector::tree() {
    hyxSDK::Simulation const& simulation = *m_application->getSimulation();
    if (m_revision == simulation.getStructureRevision())
        return json();
    m_revision = simulation.getStructureRevision();
    json bodies = json::array();
    for (auto const& body : simulation.getRigidBodies())
        bodies.push_back({{"name", std::string(body->getName())},
                          {"drawn", isDrawn(*body, m_application->getRoot())},
                          {"moves", body->getMotionControl() == hyx::RigidBody::DYNAMICS}});
    return bodies;
}

json Inspector::details() {
    hyxSDK::Simulation const& simulation = *m_application->getSimulation();
    json found = {{"joints", jointsOf(simulation)}, {"body", nullptr}};
    hyx::RigidBody const* body = m_application->getSelection();
    if (!body)
        return found;
    auto const& bodies = simulation.getRigidBodies();
    auto const place = std::ranges::find(bodies, body, [](auto const& other) { return other.get(); }) - bodies.begin();
    hyx::Quat const q = body->getRotation();
    found["body"] = {{"place", place},
                     {"name", std::string(body->getName())},
                     {"mass", finite(body->getMass())},
                     {"position", numbers(body->getPosition())},
                     {"rotation", {q.x, q.y, q.z, q.w}},
                     {"velocity", numbers(body->getVelocity())},
                     {"angular velocity", numbers(body->getAngularVelocity())},
                     {"forces", forcesOn(*body, simulation)}};
    return found;
}

} // namespace hyxOSG
