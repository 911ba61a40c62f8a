// What a recorder takes of a simulation: the bodies and particle systems once, their states again and again.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyx/journal/journal.h"
#include "platform/hyxCollide/space.h"
#include "reference/hyx/journal/particle_rows.h"

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <vector>

namespace hyx {

/// The keys by which bodies are found again: the name, or for those without one, or with that of an earlier body, `#`
/// and a number: its place among the simulation's bodies, when all are there at the start.
class JournalKeys {
public:
    /// The keys of these bodies. A body keeps its key as long as each call has it.
    std::vector<std::string> of(RigidBodyPtrVector const& bodies);

private:
    std::map<RigidBody const*, std::string> m_keys;
    size_t m_nextNumber = 0;
};

/// The bodies and particle systems of a span of time.
class RecordedBodies {
public:
    RecordedBodies(hyxSDK::Simulation const& simulation, Journal::Settings const& settings);

    /// Whether these are the bodies and particle systems that are recorded.
    bool covers(RigidBodyPtrVector const& bodies, ParticleSystems const& systems) const;

    /// `bodies` (their keys), `shapes`, `joints` (names of those that turn or slide), `mechanism`
    /// (all joints that playback can make), `systems` (their number),
    /// `velocities` and `contacts` (whether there are any) and `conditions`.
    nlohmann::json describe(std::vector<std::string> const& keys) const;

    /// The time, the positions, the rotations, the velocities if any, the positions and speeds of joints, the number of
    /// contact points and the points if any, the numbers of grains, the grains. Valid until the next call.
    std::vector<double> const& state(double time);

private:
    RigidBodyPtrVector m_bodies;
    ParticleSystems m_systems;
    std::vector<ref_ptr<Constraint1DOF>> m_joints;
    hyxCollide::Space* m_contacts; ///< null where they are not recorded
    bool m_velocities;
    nlohmann::json m_conditions, m_mechanism = nlohmann::json::array();
    std::vector<double> m_state;
};

} // namespace hyx
