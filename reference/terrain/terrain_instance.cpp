#include "platform/hyxSDK/terrain_instance.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"

#include <cmath>
#include <stdexcept>
#include <unordered_map>

namespace hyxSDK {

using hyx::Real;
using hyx::Vec3;

TerrainInstance::TerrainInstance(hyxTerrain::Terrain * terrain) : m_terrain(terrain) {
  if (!terrain)
    throw std::invalid_argument("a terrain instance needs a terrain");
  hyx::UInt const nx = terrain->getNumColumnsX(), ny = terrain->getNumColumnsY();
  Real const sizeX = (nx - 1) * terrain->getElementSize(), sizeY = (ny - 1) * terrain->getElementSize();
  m_geometry = new hyxCollide::Geometry(new hyxCollide::HeightField(nx, ny, sizeX, sizeY));
  m_body = new hyx::RigidBody;
  m_body->add(m_geometry.get());
  m_body->setMotionControl(hyx::RigidBody::STATIC);
  moveSurface();
}

TerrainInstance::~TerrainInstance() = default;

hyxTerrain::Terrain * TerrainInstance::getTerrain() const { return m_terrain.get(); }
hyxCollide::Geometry * TerrainInstance::getGeometry() const { return m_geometry.get(); }
hyx::RigidBody * TerrainInstance::getRigidBody() const { return m_body.get(); }
void TerrainInstance::setEnableCompaction(bool enable) { m_enableCompaction = enable; }
bool TerrainInstance::getEnableCompaction() const { return m_enableCompaction; }

void TerrainInstance::step(Real timeStep) {
  if (m_enableCompaction)
    takeContacts();
  m_terrain->step(timeStep);
  moveSurface();
}

void TerrainInstance::postStep(hyx::TimeStamp, Real timeStep) { step(timeStep); }

void TerrainInstance::setSimulation(Simulation * simulation) {
  if (getSimulation())
    getSimulation()->remove(m_body.get());
  Process::setSimulation(simulation);
  if (!simulation)
    return;
  m_terrain->getSoilParticles()->setGravity(simulation->getGravity());
  simulation->add(m_body.get());
}

// All contact forces on one column make its pressure.
void TerrainInstance::takeContacts() {
  if (!getSimulation())
    return;
  Vec3 const origin = m_terrain->getPosition();
  Real const size = m_terrain->getElementSize();
  hyx::UInt const nx = m_terrain->getNumColumnsX(), ny = m_terrain->getNumColumnsY();
  std::unordered_map<hyx::UInt, Real> loads;
  for (auto const & contact : getSimulation()->getSpace()->getGeometryContacts(m_geometry.get()))
    for (auto const & point : contact.points()) {
      Real const x = std::round((point.point.x - origin.x) / size), y = std::round((point.point.y - origin.y) / size);
      if (x >= 0 && y >= 0 && x < nx && y < ny)
        loads[static_cast<hyx::UInt>(y) * nx + static_cast<hyx::UInt>(x)] += point.normalForce;
    }
  for (auto const & [column, force] : loads)
    m_terrain->compact(column % nx, column / nx, force / (size * size));
}

void TerrainInstance::moveSurface() {
  Vec3 const half((m_terrain->getNumColumnsX() - 1) * m_terrain->getElementSize() / 2,
                  (m_terrain->getNumColumnsY() - 1) * m_terrain->getElementSize() / 2, 0);
  if (Vec3 const place = m_terrain->getPosition() + half; !(place == m_body->getPosition()))
    m_body->setPosition(place);
  if (m_shownRevision == m_terrain->getRevision())
    return;
  m_shownRevision = m_terrain->getRevision();
  auto & field = static_cast<hyxCollide::HeightField &>(*m_geometry->getShape());
  std::vector<float> const & heights = m_terrain->getHeights();
  std::copy(heights.begin(), heights.end(), field.heightsForWriting());
  field.heightsChanged();
}

}
