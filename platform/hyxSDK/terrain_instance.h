#pragma once

#include "platform/hyx/object.h"
#include "platform/hyx/referenced.h"
#include "platform/hyx/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxTerrain/terrain.h"

namespace hyxSDK {

class Simulation;

/// A terrain in a simulation: bodies stand on it, compact it and dig in it.
class TerrainInstance : public hyx::Object {
public:
  /// Puts `terrain` into the world; the collision surface follows its heights. Throws `std::invalid_argument` for null.
  explicit TerrainInstance(hyxTerrain::Terrain * terrain);

  hyxTerrain::Terrain * getTerrain() const;
  /// The geometry that bodies collide with, and the static body that carries it.
  hyxCollide::Geometry * getGeometry() const;
  hyx::RigidBody * getRigidBody() const;
  /// The simulation that the instance was added to, null before.
  Simulation * getSimulation() const;

  /// Whether contacts compact the soil, true at first.
  void setEnableCompaction(bool enable);
  bool getEnableCompaction() const;

  /// Takes the contacts of the last step of the simulation, advances the soil and moves the collision surface after it.
  void step(hyx::Real timeStep);

protected:
  ~TerrainInstance() override;

private:
  void takeContacts();
  void moveSurface();

  hyx::ref_ptr<hyxTerrain::Terrain> m_terrain;
  hyx::ref_ptr<hyxCollide::Geometry> m_geometry;
  hyx::ref_ptr<hyx::RigidBody> m_body;
  Simulation * m_simulation = nullptr;
  hyx::UInt m_shownRevision = 0;
  bool m_enableCompaction = true;
};

}
