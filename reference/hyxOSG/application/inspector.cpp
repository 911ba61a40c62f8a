// Looks into a simulation for the remote page.
#include "reference/hyxOSG/application/inspector.h"

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxOSG/visuals/render_state.h"
#include "platform/hyxSDK/simulation.h"

#include <nlohmann/json.hpp>
#include <osg/Camera>
#include <osg/Viewport>

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

json contactsOf(hyx::RigidBody const& body, hyxSDK::Simulation const& simulation) {
    json contacts = json::array();
    for (auto const& contact : simulation.getSpace()->getGeometryContacts())
        for (int side : {0, 1}) {
            auto const* own = contact.getGeometry(side);
            auto const* other = contact.getGeometry(1 - side);
            if (contact.getNumPoints() == 0 || !own || own->getRigidBody() != &body)
                continue;
            auto const* otherBody = other ? other->getRigidBody() : nullptr;
            contacts.push_back({{"with", otherBody ? std::string(otherBody->getName()) : ""},
                                {"force", finite(contact.getForce().length())}});
        }
    return contacts;
}

} // namespace

bool Inspector::follow(json const& message) {
    std::string const what = message.value("do", "");
    if (what == "select" && message.contains("x")) {
        osg::Camera const* camera = m_application->getCamera();
        PickHandler* handler = m_application->getPickHandler();
        if (!camera || !camera->getViewport() || !handler)
            return true;
        float const height = float(camera->getViewport()->height());
        select(handler->intersect(message.value("x", 0.0f), height - message.value("y", 0.0f), false).getRigidBody());
    } else if (what == "select") {
        select(bodyAt(message.value("body", json())));
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

void Inspector::select(hyx::RigidBody* body) {
    auto const outline = [this](bool on) {
        if (m_selected)
            eachNode(*m_selected, m_application->getRoot(), [on](GeometryNode& node) { setEnableOutline(&node, on); });
    };
    outline(false);
    m_selected = body;
    outline(true);
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
    auto const& bodies = simulation.getRigidBodies();
    for (size_t place = 0; m_selected && place < bodies.size(); ++place) {
        hyx::RigidBody const& body = *bodies[place];
        if (&body != m_selected.get())
            continue;
        hyx::Quat const q = body.getRotation();
        found["body"] = {{"place", place},
                         {"name", std::string(body.getName())},
                         {"mass", finite(body.getMass())},
                         {"position", numbers(body.getPosition())},
                         {"rotation", {q.x, q.y, q.z, q.w}},
                         {"velocity", numbers(body.getVelocity())},
                         {"angular velocity", numbers(body.getAngularVelocity())},
                         {"contacts", contactsOf(body, simulation)}};
    }
    if (found["body"].is_null())
        m_selected = nullptr; // it has left
    return found;
}

} // namespace hyxOSG
