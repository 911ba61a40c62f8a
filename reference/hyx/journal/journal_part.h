// A span of a session in which the bodies are the same, as it is read.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "reference/hyx/journal/particle_rows.h"

#include <map>
#include <string>
#include <vector>

namespace hyx {

/// Reads states of the same bodies. What is damaged throws std::runtime_error.
class JournalPartReader {
public:
    virtual ~JournalPartReader() = default;

    virtual std::vector<std::string> const& keys() const = 0;
    /// Of particles.
    virtual size_t numSystems() const = 0;
    virtual size_t numStates() const = 0;

    /// A body as it was recorded, without a place: its shapes, its mass, its motion control.
    virtual ref_ptr<RigidBody> makeBody(size_t body) const = 0;

    /// The joints that were recorded, of these bodies; none in journals that lack them.
    virtual ConstraintPtrVector makeJoints(RigidBodyPtrVector const& bodies) const = 0;

    struct State {
        double time;
        std::vector<double> positions, rotations, velocities, angularVelocities; ///< velocities may be empty
        std::vector<std::vector<Particle>> grains;                               ///< of each particle system
        std::map<std::string, double> joints;                                    ///< positions by name
        std::vector<double> contacts;                                            ///< as contactsOf reads them
    };

    virtual State read(size_t row) const = 0;

    /// Simulated seconds.
    virtual double time(size_t row) const = 0;
    /// The last row at or before a time, or the first. Times grow from row to row, unless a state was restored
    /// meanwhile.
    virtual size_t rowAt(double time) const = 0;

    virtual std::string const& conditions() const = 0;
    virtual std::string const& description() const = 0;
};

} // namespace hyx
