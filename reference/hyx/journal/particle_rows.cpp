// Grains as rows of numbers.
#include "reference/hyx/journal/particle_rows.h"

#include <algorithm>
#include <stdexcept>

namespace hyx {
namespace {

void add(std::vector<double>& numbers, Particle const& grain) {
    auto const& [id, position, velocity, rotation, radius, mass, age, color] = grain;
    numbers.insert(numbers.end(),
                   {double(id), position.x, position.y, position.z, velocity.x, velocity.y, velocity.z, rotation.x,
                    rotation.y, rotation.z, rotation.w, radius, mass, age, color.x, color.y, color.z, color.w});
}

Particle grainOf(double const* n) {
    constexpr double largestNumber = 9007199254740992; // 2^53
    if (!(n[0] >= 0 && n[0] <= largestNumber && n[11] >= 0))
        throw std::runtime_error("the journal is damaged: its particles");
    return {Index(n[0]),
            Vec3(n[1], n[2], n[3]),
            Vec3(n[4], n[5], n[6]),
            Quat(n[7], n[8], n[9], n[10]),
            n[11],
            n[12],
            n[13],
            Vec4f(float(n[14]), float(n[15]), float(n[16]), float(n[17]))};
}

} // namespace

ParticleSystems particleSystemsOf(hyxSDK::Simulation const& simulation) {
    ParticleSystems systems;
    for (auto const& process : simulation.getProcesses())
        if (auto* system = dynamic_cast<ParticleSystem*>(process.get()))
            systems.push_back(system);
    return systems;
}

std::vector<std::string> const& grainColumns() {
    static std::vector<std::string> const columns = {"id",   "x",   "y",   "z",     "vx",   "vy",
                                                     "vz",   "qx",  "qy",  "qz",    "qw",   "radius",
                                                     "mass", "age", "red", "green", "blue", "alpha"};
    return columns;
}

void addGrains(std::vector<double>& numbers, ParticleSystems const& systems) {
    for (auto const& system : systems)
        numbers.push_back(double(system->getNumParticles()));
    for (auto const& system : systems)
        for (Particle const& grain : system->getParticles())
            add(numbers, grain);
}

ParticleReader::ParticleReader(hid_t group) {
    if (!hasHdf5Link(group, "particles"))
        return;
    m_counts = Hdf5Rows::open(group, "particleCount", 1);
    m_grains = Hdf5Rows::open(group, "particles", grainColumns().size());
    if (m_grains.numItems() != 1)
        throw std::runtime_error("the journal is damaged: its particles are not one in a row");
    constexpr size_t block = 1024; // states: how many there are is only a claim
    m_starts = {0};
    for (size_t row = 0; row < m_counts.numRows(); row += block)
        for (double const count : m_counts.read(row, std::min(block, m_counts.numRows() - row))) {
            if (!(count >= 0 && count <= double(m_grains.numRows() - m_starts.back())))
                throw std::runtime_error("the journal is damaged: its particles are not as many as were counted");
            m_starts.push_back(m_starts.back() + size_t(count));
        }
}

std::vector<std::vector<Particle>> ParticleReader::read(size_t state) const {
    std::vector<std::vector<Particle>> systems(numSystems());
    for (size_t i = 0; i < systems.size(); ++i) {
        size_t const place = state * numSystems() + i, first = m_starts.at(place),
                     count = m_starts.at(place + 1) - first;
        std::vector<double> const numbers = m_grains.read(first, count);
        for (size_t grain = 0; grain < count; ++grain)
            systems[i].push_back(grainOf(&numbers[grain * grainColumns().size()]));
    }
    return systems;
}

} // namespace hyx
