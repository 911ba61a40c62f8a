// Terrain as a part of a simulation.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxTerrain/terrain.h"

#include <vector>

namespace hyxSDK {

/// A terrain in a simulation: bodies stand on it, compact it and dig in it.
class TerrainInstance : public hyx::Process {
public:
    /// Puts `terrain` into the world; the collision surface follows its heights. Throws `std::invalid_argument` for
    /// null.
    explicit TerrainInstance(hyxTerrain::Terrain* terrain);

    /// The terrain that is in the simulation.
    hyxTerrain::Terrain* getTerrain() const;
    /// The geometry that bodies collide with, and the static body that carries it.
    hyxCollide::Geometry* getGeometry() const;
    /// The body that is the ground.
    hyx::RigidBody* getRigidBody() const;

    /// Whether contacts compact the soil, true at first.
    void setEnableCompaction(bool enable);
    bool getEnableCompaction() const;

    /// Takes the contacts of the last step of the simulation, advances the soil and moves the collision surface after
    /// it.
    void step(hyx::Real timeStep);

    /// Takes the body that carries the surface along into the simulation, and out of it.
    void setSimulation(Simulation* simulation) override;
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;

protected:
    ~TerrainInstance() override;

private:
    /// A column and the pressure in Pa that has come upon it so far.
    struct Load {
        hyx::UInt x, y;
        hyx::Real pressure;
    };

    std::vector<Load> findLoads() const;
    void press(std::vector<Load> const& loads, hyx::Real timeStep);
    void moveSurface();

    hyx::ref_ptr<hyxTerrain::Terrain> m_terrain;
    hyx::ref_ptr<hyxCollide::Geometry> m_geometry;
    hyx::ref_ptr<hyx::RigidBody> m_body;
    hyx::UInt m_shownRevision = 0;
    bool m_enableCompaction = true;
    std::vector<Load> m_loads;
};

} // namespace hyxSDK
