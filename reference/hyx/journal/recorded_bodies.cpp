// Bodies as JSON, their states as numbers.
#include "reference/hyx/journal/recorded_bodies.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/journal/contact_rows.h"
#include "reference/hyx/journal/joint_json.h"
#include "reference/hyx/journal/shape_json.h"

#include <algorithm>
#include <set>

namespace hyx {
namespace {

nlohmann::json describeBody(RigidBody const& body) {
    nlohmann::json geometries = nlohmann::json::array();
    for (auto const& geometry : body.getGeometries()) {
        AffineMatrix4x4 const& local = geometry->getLocalTransform();
        geometries.push_back({{"shape", describeShape(*geometry->getShape())},
                              {"local", std::vector<double>(local.ptr(), local.ptr() + 16)}});
    }
    return {{"geometries", geometries}, {"motion", int(body.getMotionControl())}, {"mass", body.getMass()}};
}

void add(std::vector<double>& list, Vec3 const& v) {
    list.insert(list.end(), {v.x, v.y, v.z});
}

} // namespace

std::vector<std::string> JournalKeys::of(RigidBodyPtrVector const& bodies) {
    std::map<RigidBody const*, std::string> next;
    std::set<std::string> used;
    std::vector<std::string> keys;
    for (size_t place = 0; place < bodies.size(); ++place) {
        auto const known = m_keys.find(bodies[place].get());
        std::string key = known != m_keys.end() ? known->second : std::string(bodies[place]->getName());
        if (key.empty() || used.contains(key))
            key = "#" + std::to_string(m_keys.empty() ? place : m_nextNumber++);
        used.insert(key);
        next[bodies[place].get()] = key;
        keys.push_back(key);
    }
    m_nextNumber = std::max(m_nextNumber, bodies.size());
    m_keys = std::move(next);
    return keys;
}

RecordedBodies::RecordedBodies(hyxSDK::Simulation const& simulation, Journal::Settings const& settings)
    : m_bodies(simulation.getRigidBodies()),
      m_systems(particleSystemsOf(simulation)),
      m_contacts(settings.contacts ? simulation.getSpace() : nullptr),
      m_velocities(settings.velocities) {
    for (auto const& constraint : simulation.getConstraints())
        if (auto* joint = dynamic_cast<Constraint1DOF*>(constraint.get()); joint && !joint->getName().empty())
            m_joints.push_back(joint);
    constexpr int version = 3;
    Vec3 const gravity = simulation.getGravity();
    for (auto const& constraint : simulation.getConstraints())
        if (nlohmann::json description = describeJoint(*constraint, m_bodies); !description.is_null())
            m_mechanism.push_back(std::move(description));
    m_conditions = {
        {"version", version}, {"timeStep", simulation.getTimeStep()}, {"gravity", {gravity.x, gravity.y, gravity.z}}};
}

bool RecordedBodies::covers(RigidBodyPtrVector const& bodies, ParticleSystems const& systems) const {
    auto const same = [](auto const& a, auto const& b) { return a.get() == b.get(); };
    return std::equal(m_bodies.begin(), m_bodies.end(), bodies.begin(), bodies.end(), same) &&
           std::equal(m_systems.begin(), m_systems.end(), systems.begin(), systems.end(), same);
}

nlohmann::json RecordedBodies::describe(std::vector<std::string> const& keys) const {
    nlohmann::json shapes = nlohmann::json::array();
    for (auto const& body : m_bodies)
        shapes.push_back(describeBody(*body));
    nlohmann::json joints = nlohmann::json::array();
    for (auto const& joint : m_joints)
        joints.push_back(std::string(joint->getName()));
    return {{"bodies", keys},
            {"shapes", shapes},
            {"joints", joints},
            {"mechanism", m_mechanism},
            {"systems", m_systems.size()},
            {"velocities", m_velocities},
            {"contacts", m_contacts != nullptr},
            {"conditions", m_conditions}};
}

std::vector<double> const& RecordedBodies::state(double time) {
    m_state.assign(1, time);
    for (auto const& body : m_bodies)
        add(m_state, body->getPosition());
    for (auto const& body : m_bodies) {
        Quat const rotation = body->getRotation();
        m_state.insert(m_state.end(), {rotation.x, rotation.y, rotation.z, rotation.w});
    }
    if (m_velocities) {
        for (auto const& body : m_bodies)
            add(m_state, body->getVelocity());
        for (auto const& body : m_bodies)
            add(m_state, body->getAngularVelocity());
    }
    for (auto const& joint : m_joints)
        m_state.insert(m_state.end(), {joint->getAngle(), joint->getCurrentSpeed()});
    if (m_contacts)
        addContacts(m_state, m_contacts->getGeometryContacts(), m_bodies);
    addGrains(m_state, m_systems);
    return m_state;
}

} // namespace hyx
