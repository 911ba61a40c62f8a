// Grains as rows of numbers.
#include "reference/hyx/journal/particle_rows.h"

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

std::vector<Particle> grainsOf(std::span<double const> numbers) {
    std::vector<Particle> grains;
    for (size_t place = 0; place < numbers.size(); place += grainColumns().size())
        grains.push_back(grainOf(&numbers[place]));
    return grains;
}

} // namespace hyx
