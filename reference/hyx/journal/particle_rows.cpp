// Grains as rows of numbers.
#include "reference/hyx/journal/particle_rows.h"

#include <algorithm>
#include <stdexcept>

namespace hyx {
namespace {

std::vector<std::string> const columns = {"id", "x",  "y",      "z",    "vx",  "vy",  "vz",    "qx",   "qy",
                                          "qz", "qw", "radius", "mass", "age", "red", "green", "blue", "alpha"};

void add(std::vector<double>& numbers, Particle const& grain) {
    auto const& [id, position, velocity, rotation, radius, mass, age, color] = grain;
    numbers.insert(numbers.end(),
                   {double(id), position.x, position.y, position.z, velocity.x, velocity.y, velocity.z, rotation.x,
                    rotation.y, rotation.z, rotation.w, radius, mass, age, color.x, color.y, color.z, color.w});
}

Particle grainOf(double const* n) {
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

ParticleWriter::ParticleWriter(hid_t group, ParticleSystems const& systems, Hdf5Storage storage) : m_systems(systems) {
    if (systems.empty())
        return;
    writeHdf5Texts(group, "particleColumns", columns);
    m_counts = Hdf5Rows::create(group, "particleCount", systems.size(), 1, {.compressed = storage.compressed});
    m_grains = Hdf5Rows::create(group, "particles", 1, columns.size(), storage);
}

void ParticleWriter::store() {
    for (auto const& system : m_systems) {
        m_newCounts.push_back(double(system->getNumParticles()));
        for (Particle const& grain : system->getParticles())
            add(m_newGrains, grain);
    }
}

void ParticleWriter::flush() {
    if (m_systems.empty())
        return;
    m_grains.append(m_newGrains);
    m_counts.append(m_newCounts); // last: grains count when their number is there
    m_newGrains.clear();
    m_newCounts.clear();
}

ParticleReader::ParticleReader(hid_t group) {
    if (!hasHdf5Link(group, "particles"))
        return;
    m_counts = Hdf5Rows::open(group, "particleCount");
    m_grains = Hdf5Rows::open(group, "particles");
    m_starts = {0};
    for (double const count : m_counts.read(0, m_counts.numRows())) {
        if (!(count >= 0 && count <= double(m_grains.numRows())))
            throw std::runtime_error("the journal is damaged: its counts of particles");
        m_starts.push_back(m_starts.back() + size_t(count));
    }
    if (m_starts.back() > m_grains.numRows() || m_grains.numComponents() != columns.size())
        throw std::runtime_error("the journal is damaged: its particles are not as many as were counted");
}

void ParticleReader::show(size_t state, ParticleSystems const& systems) const {
    for (size_t i = 0; i < systems.size(); ++i) {
        size_t const place = state * numSystems() + i, first = m_starts[place], count = m_starts[place + 1] - first;
        std::vector<double> const numbers = m_grains.read(first, count);
        std::vector<Particle>& grains = systems[i]->getParticles();
        grains.clear();
        for (size_t grain = 0; grain < count; ++grain)
            grains.push_back(grainOf(&numbers[grain * columns.size()]));
    }
}

} // namespace hyx
