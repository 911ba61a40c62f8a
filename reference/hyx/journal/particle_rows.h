// The grains of particle systems in journals.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/journal/hdf5_data.h"

#include <vector>

namespace hyx {

using ParticleSystems = std::vector<ref_ptr<ParticleSystem>>;

/// In the order in which they were added.
ParticleSystems particleSystemsOf(hyxSDK::Simulation const& simulation);

/// What the numbers of a grain are.
std::vector<std::string> const& grainColumns();
/// The number of grains of each system, then the grains.
void addGrains(std::vector<double>& numbers, ParticleSystems const& systems);

/// Reads one long array of all grains of all states, and how many there are of each system in each state; of a group
/// without particles nothing.
class ParticleReader {
public:
    explicit ParticleReader(hid_t group);

    size_t numSystems() const { return m_counts.numItems(); }

    size_t numStates() const { return m_counts.numRows(); }

    /// The grains of each system in a state. Throws std::runtime_error for what no grain can be.
    std::vector<std::vector<Particle>> read(size_t state) const;

private:
    Hdf5Rows m_counts, m_grains;
    std::vector<size_t> m_starts; ///< the first row of each system in each state, and the end
};

} // namespace hyx
