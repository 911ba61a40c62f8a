// The grains of particle systems in journals.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxSDK/simulation.h"

#include <span>
#include <string>
#include <vector>

namespace hyx {

using ParticleSystems = std::vector<ref_ptr<ParticleSystem>>;

/// In the order in which they were added.
ParticleSystems particleSystemsOf(hyxSDK::Simulation const& simulation);

/// What the numbers of a grain are.
std::vector<std::string> const& grainColumns();
/// The number of grains of each system, then the grains.
void addGrains(std::vector<double>& numbers, ParticleSystems const& systems);

/// The grains of rows of numbers. Throws std::runtime_error for what no grain can be.
std::vector<Particle> grainsOf(std::span<double const> numbers);

} // namespace hyx
