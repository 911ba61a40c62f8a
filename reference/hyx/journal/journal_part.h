// A span of a session in which the bodies are the same.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "reference/hyx/journal/counted_rows.h"
#include "reference/hyx/journal/particle_rows.h"

#include <nlohmann/json.hpp>

#include <map>
#include <span>
#include <string>
#include <vector>

namespace hyx {

/// Makes a group of datasets of what was recorded.
class JournalPartWriter {
public:
    /// `description` is that of RecordedBodies.
    JournalPartWriter(hid_t session, std::string const& name, nlohmann::json const& description, Hdf5Storage storage);

    /// A state of RecordedBodies. Throws std::runtime_error for another number of numbers.
    void store(std::span<double const> state);
    /// Writes what is waiting.
    void flush();

private:
    /// An array, made when its first rows are there, and the rows that wait.
    struct Rows {
        std::string name;
        size_t items, components;
        Hdf5Storage storage;
        Hdf5Rows data;
        std::vector<double> waiting;
        bool counted = false; ///< as many a state as the rows before say
    };

    void addRows(std::string const& name, size_t items, size_t components, Hdf5Storage storage);
    /// Rows of which each state has another number.
    void addCounted(std::string const& name, std::string const& countName, size_t owners,
                    std::vector<std::string> const& columns, Hdf5Storage storage);
    void write(Rows& rows);

    Hdf5Handle m_group;
    std::vector<Rows> m_rows; ///< in the order of a state's numbers
    size_t m_waiting = 0;     ///< states
};

/// Reads states of the same bodies. What is damaged throws std::runtime_error.
class JournalPartReader {
public:
    JournalPartReader(hid_t session, std::string const& name) : JournalPartReader(openHdf5Group(session, name)) {}

    std::vector<std::string> const& keys() const { return m_keys; }

    size_t numSystems() const { return m_particles.numOwners(); }

    size_t numStates() const { return m_numStates; }

    /// A body as it was recorded, without a place: its shapes, its mass, its motion control.
    ref_ptr<RigidBody> makeBody(size_t body) const;

    /// The joints that were recorded, of these bodies; none in journals that lack them.
    ConstraintPtrVector makeJoints(RigidBodyPtrVector const& bodies) const;

    struct State {
        double time;
        std::vector<double> positions, rotations, velocities, angularVelocities; ///< velocities may be empty
        std::vector<std::vector<Particle>> grains;                               ///< of each particle system
        std::map<std::string, double> joints;                                    ///< positions by name
        std::vector<double> contacts;                                            ///< as contactsOf reads them
    };

    State read(size_t row) const;

    /// Simulated seconds.
    double time(size_t row) const;
    /// The last row at or before a time, or the first. Times grow from row to row, unless a state was restored
    /// meanwhile.
    size_t rowAt(double time) const;

    std::string const& conditions() const { return m_conditions; }

    std::string const& description() const { return m_description; }

private:
    explicit JournalPartReader(Hdf5Handle const& group);
    Hdf5Rows openBodyRows(hid_t group, char const* name, size_t components) const;

    std::vector<std::string> m_keys;
    nlohmann::json m_shapes;    ///< a description for each body
    nlohmann::json m_mechanism; ///< a list of joints
    CountedRows m_particles, m_contacts;
    Hdf5Rows m_time, m_position, m_rotation, m_velocity, m_angularVelocity, m_joint;
    std::vector<std::string> m_joints;
    std::string m_conditions, m_description;
    size_t m_numStates = 0;
};

} // namespace hyx
