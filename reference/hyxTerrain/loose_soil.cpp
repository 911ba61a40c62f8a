// Frees grains from the ground, and takes back those that lie still.
#include "reference/hyxTerrain/loose_soil.h"

#include "reference/machinery/files/state_bytes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyxTerrain {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr Real packing = 0.6;       ///< part of a heap's volume that its grains fill
constexpr Real restingSpeed = 0.15; ///< m/s
constexpr Real restingTime = 0.5;   ///< s

} // namespace

LooseSoil::LooseSoil(Columns& columns, hyx::ParticleSystem& grains) : m_columns(columns), m_grains(grains) {
    m_grains.setParticleRadius(0.4 * columns.elementSize);
}

// A heap of grains has the bulk density of loose soil.
Real LooseSoil::grainMass(hyx::UInt material) const {
    Real const radius = m_grains.getParticleRadius();
    return m_columns.materials[material].density * Columns::loose / packing * 4.0 / 3.0 * std::numbers::pi * radius *
           radius * radius;
}

void LooseSoil::free(std::size_t c, Soil const& soil, Vec3 const& velocity, Vec3 const& terrainPosition) {
    m_kept.resize(std::max<std::size_t>(m_kept.size(), soil.material + 1), 0);
    m_kept[soil.material] += soil.mass;
    Real const mass = grainMass(soil.material), radius = m_grains.getParticleRadius(), size = m_columns.elementSize;
    Vec3 place(c % m_columns.nx * size, c / m_columns.nx * size, m_columns.height(c) + radius);
    for (; m_kept[soil.material] >= mass; m_kept[soil.material] -= mass, place.z += 2 * radius) {
        auto const jitter = [this, size] {
            return (static_cast<Real>(m_generator() >> 11) * 0x1p-53 - 0.5) * 0.5 * size;
        };
        hyx::Index const id =
            m_grains.createParticle(terrainPosition + place + Vec3(jitter(), jitter(), 0), velocity, radius, mass);
        m_known[id] = {soil.material, 0};
    }
}

void LooseSoil::settle(Real timeStep, Vec3 const& terrainPosition, std::vector<Vec3> const& keepAway, Real reach) {
    std::vector<hyx::Index> resting;
    for (hyx::Particle const& particle : m_grains.getParticles()) {
        Grain& grain = m_known[particle.id];
        bool const held = std::any_of(keepAway.begin(), keepAway.end(), [&](Vec3 const& point) {
            return (particle.position - point).length2() < reach * reach;
        });
        Vec3 const local = (particle.position - terrainPosition) / m_columns.elementSize;
        auto const x = static_cast<hyx::UInt>(std::clamp<Real>(std::round(local.x), 0, m_columns.nx - 1));
        auto const y = static_cast<hyx::UInt>(std::clamp<Real>(std::round(local.y), 0, m_columns.ny - 1));
        std::size_t const c = m_columns.index(x, y);
        bool const lies = particle.position.z - terrainPosition.z - m_columns.height(c) <
                          1.5 * particle.radius + 0.5 * m_columns.elementSize;
        grain.rest =
            !held && lies && particle.velocity.length2() < restingSpeed * restingSpeed ? grain.rest + timeStep : 0;
        if (grain.rest < restingTime)
            continue;
        m_columns.addSolid(c, {particle.mass, grain.material}, Columns::loose);
        resting.push_back(particle.id);
    }
    for (hyx::Index id : resting) {
        m_grains.removeParticle(id);
        m_known.erase(id);
    }
}

void LooseSoil::exchangeState(hyx::StateBytes& bytes) {
    struct Known {
        hyx::Index id;
        Grain grain;
    };

    std::vector<Known> kept;
    for (hyx::Particle const& particle : m_grains.getParticles())
        if (auto const found = m_known.find(particle.id); found != m_known.end())
            kept.push_back({found->first, found->second});
    bytes(kept, m_kept, m_generator);
    m_known.clear();
    for (Known const& one : kept)
        m_known[one.id] = one.grain;
}

Real LooseSoil::mass() const {
    Real sum = m_grains.getMass();
    for (Real kept : m_kept)
        sum += kept;
    return sum;
}

} // namespace hyxTerrain
