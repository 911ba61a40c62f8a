// A span of a session in which the bodies are the same.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/journal/hdf5_file.h"
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

/// Writes states of the same bodies, in blocks.
class JournalPartWriter {
public:
    JournalPartWriter(hid_t session, std::string const& name, RigidBodyPtrVector const& bodies,
                      std::vector<std::string> const& keys, ParticleSystems const& systems, Hdf5Storage storage,
                      bool velocities);

    /// Whether these are the bodies and particle systems that are written.
    bool covers(RigidBodyPtrVector const& bodies, ParticleSystems const& systems) const;

    void store(double time);
    /// Writes the block that is not full yet.
    void flush();

private:
    RigidBodyPtrVector m_bodies;
    Hdf5Handle m_group;
    ParticleWriter m_particles;
    Hdf5Rows m_time, m_position, m_rotation, m_velocity, m_angularVelocity;
    std::vector<double> m_times, m_positions, m_rotations, m_velocities, m_angularVelocities;
};

/// Reads states of the same bodies.
class JournalPartReader {
public:
    JournalPartReader(hid_t session, std::string const& name) : JournalPartReader(openHdf5Group(session, name)) {}

    std::vector<std::string> const& keys() const { return m_keys; }

    size_t numStates() const { return m_time.numRows(); }

    ParticleReader const& particles() const { return m_particles; }

    /// A body as it was recorded, without a place: its shapes, its mass, its motion control.
    ref_ptr<RigidBody> makeBody(size_t body) const;

    struct State {
        double time;
        std::vector<double> positions, rotations, velocities, angularVelocities; ///< velocities may be empty
    };

    State read(size_t row) const;

private:
    explicit JournalPartReader(Hdf5Handle const& group);

    std::vector<std::string> m_keys;
    nlohmann::json m_shapes; ///< a description for each body
    ParticleReader m_particles;
    Hdf5Rows m_time, m_position, m_rotation, m_velocity, m_angularVelocity;
};

} // namespace hyx
