// Terrain as grains feel it.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxTerrain/terrain.h"

namespace hyxTerrain {

/// The surface of a terrain, as something that grains cannot enter. The terrain owns it and its grains, so it is not
/// kept alive.
class TerrainObstacle : public hyx::ParticleObstacle {
public:
    explicit TerrainObstacle(Terrain const& terrain) : m_terrain(terrain) {}

    bool find(hyx::Vec3 const& position, hyx::Real reach, Surface& surface) const override {
        hyx::Real const above = position.z - m_terrain.getWorldHeight(position.x, position.y);
        // The steepest normal counted with still has a component of a quarter upwards.
        if (above > 4 * reach)
            return false;
        hyx::Vec3 const normal = m_terrain.getWorldNormal(position.x, position.y);
        surface = {above * normal.z, normal, hyx::Vec3()};
        return surface.distance < reach;
    }

protected:
    ~TerrainObstacle() override = default;

private:
    Terrain const& m_terrain;
};

} // namespace hyxTerrain
