// The grains of particle systems in journals.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/journal/hdf5_file.h"

#include <vector>

namespace hyx {

using ParticleSystems = std::vector<ref_ptr<ParticleSystem>>;

/// In the order in which they were added.
ParticleSystems particleSystemsOf(hyxSDK::Simulation const& simulation);

/// Writes all grains of all states as one long array, and how many there are of each system in each state.
class ParticleWriter {
public:
    ParticleWriter(hid_t group, ParticleSystems const& systems, Hdf5Storage storage);

    void store();
    void flush();

    ParticleSystems const& systems() const { return m_systems; }

private:
    ParticleSystems m_systems;
    Hdf5Rows m_counts, m_grains;
    std::vector<double> m_newCounts, m_newGrains;
};

/// Reads what a ParticleWriter wrote; of a group without particles nothing.
class ParticleReader {
public:
    explicit ParticleReader(hid_t group);

    size_t numSystems() const { return m_counts.numItems(); }

    size_t numStates() const { return m_counts.numRows(); }

    /// Gives the systems the grains of a state.
    void show(size_t state, ParticleSystems const& systems) const;

private:
    Hdf5Rows m_counts, m_grains;
    std::vector<size_t> m_starts; ///< the first row of each system in each state, and the end
};

} // namespace hyx
