// Soil in the air or in a bucket, as grains.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "reference/hyxTerrain/columns.h"

#include <random>
#include <unordered_map>
#include <vector>

namespace hyx {
class StateBytes;
} // namespace hyx

namespace hyxTerrain {

/// The grains of a terrain: soil that was freed becomes grains, grains at rest become soil. Masses are conserved
/// exactly.
class LooseSoil {
public:
    LooseSoil(Columns& columns, hyx::ParticleSystem& grains);

    /// Keeps soil freed from a column, and makes as many whole grains of it as it gives. `velocity` in m/s.
    void free(std::size_t c, Soil const& soil, hyx::Vec3 const& velocity, hyx::Vec3 const& terrainPosition);
    /// Turns grains that have lain still for half a second, farther than `reach` metres from all `keepAway` points,
    /// into soil.
    void settle(hyx::Real timeStep, hyx::Vec3 const& terrainPosition, std::vector<hyx::Vec3> const& keepAway,
                hyx::Real reach);
    /// All grains and what is kept, in kg.
    hyx::Real mass() const;

    void exchangeState(hyx::StateBytes& bytes);

private:
    struct Grain {
        hyx::UInt material = 0;
        hyx::Real rest = 0; ///< seconds without motion
    };

    hyx::Real grainMass(hyx::UInt material) const;

    Columns& m_columns;
    hyx::ParticleSystem& m_grains;
    std::unordered_map<hyx::Index, Grain> m_known;
    std::vector<hyx::Real> m_kept; ///< kg by material that make no whole grain yet
    std::mt19937_64 m_generator;
};

} // namespace hyxTerrain
