// A span of a session in which the bodies are the same, as a group of datasets.
#pragma once

#include "reference/hyx/journal/hdf5_counted_rows.h"
#include "reference/hyx/journal/journal_part.h"

#include <nlohmann/json.hpp>

#include <span>
#include <string>
#include <vector>

namespace hyx {

/// Makes a group of datasets of what was recorded.
class Hdf5PartWriter {
public:
    /// `description` is that of RecordedBodies.
    Hdf5PartWriter(hid_t session, std::string const& name, nlohmann::json const& description, Hdf5Storage storage);

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

/// Reads such a group.
class Hdf5PartReader : public JournalPartReader {
public:
    Hdf5PartReader(hid_t session, std::string const& name) : Hdf5PartReader(openHdf5Group(session, name)) {}

    std::vector<std::string> const& keys() const override { return m_keys; }

    size_t numSystems() const override { return m_particles.numOwners(); }

    size_t numStates() const override { return m_numStates; }

    ref_ptr<RigidBody> makeBody(size_t body) const override;
    ConstraintPtrVector makeJoints(RigidBodyPtrVector const& bodies) const override;
    State read(size_t row) const override;
    double time(size_t row) const override;
    size_t rowAt(double time) const override;

    std::string const& conditions() const override { return m_conditions; }

    std::string const& description() const override { return m_description; }

private:
    explicit Hdf5PartReader(Hdf5Handle const& group);
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
