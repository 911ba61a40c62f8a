// Lets bodies stand on a terrain, press it down and dig in it.
#include "platform/hyxSDK/terrain_instance.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

namespace hyxSDK {

using hyx::Real;
using hyx::Vec3;

TerrainInstance::TerrainInstance(hyxTerrain::Terrain* terrain) : m_terrain(terrain) {
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

hyxTerrain::Terrain* TerrainInstance::getTerrain() const {
    return m_terrain.get();
}

hyxCollide::Geometry* TerrainInstance::getGeometry() const {
    return m_geometry.get();
}

hyx::RigidBody* TerrainInstance::getRigidBody() const {
    return m_body.get();
}

void TerrainInstance::setEnableCompaction(bool enable) {
    m_enableCompaction = enable;
}

bool TerrainInstance::getEnableCompaction() const {
    return m_enableCompaction;
}

void TerrainInstance::step(Real timeStep) {
    if (getSimulation())
        m_terrain->getSoilParticles()->setGravity(getSimulation()->getGravity());
    if (m_enableCompaction)
        takeContacts();
    m_terrain->step(timeStep);
    moveSurface();
}

void TerrainInstance::postStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

void TerrainInstance::setSimulation(Simulation* simulation) {
    if (getSimulation())
        getSimulation()->remove(m_body.get());
    Process::setSimulation(simulation);
    if (!simulation)
        return;
    simulation->add(m_body.get());
}

// All contact forces on one column make its pressure. A contact point stands for a patch: its force goes to three by
// three columns, a quarter of it to the middle one.
void TerrainInstance::takeContacts() {
    if (!getSimulation())
        return;
    static constexpr Real shares[] = {0.25, 0.5, 0.25};
    Vec3 const origin = m_terrain->getPosition();
    Real const size = m_terrain->getElementSize();
    auto const nx = static_cast<long>(m_terrain->getNumColumnsX()), ny = static_cast<long>(m_terrain->getNumColumnsY());
    std::map<std::pair<long, long>, Real> loads;
    for (auto const& contact : getSimulation()->getSpace()->getGeometryContacts(m_geometry.get()))
        for (auto const& point : contact.points()) {
            long const x = std::lround((point.point.x - origin.x) / size),
                       y = std::lround((point.point.y - origin.y) / size);
            for (long dy = -1; dy <= 1; ++dy)
                for (long dx = -1; dx <= 1; ++dx)
                    if (x + dx >= 0 && y + dy >= 0 && x + dx < nx && y + dy < ny)
                        loads[{y + dy, x + dx}] += point.normalForce * shares[dx + 1] * shares[dy + 1];
        }
    for (auto const& [place, force] : loads)
        m_terrain->compact(place.second, place.first, force / (size * size));
}

void TerrainInstance::moveSurface() {
    Vec3 const half((m_terrain->getNumColumnsX() - 1) * m_terrain->getElementSize() / 2,
                    (m_terrain->getNumColumnsY() - 1) * m_terrain->getElementSize() / 2, 0);
    if (Vec3 const place = m_terrain->getPosition() + half; !(place == m_body->getPosition()))
        m_body->setPosition(place);
    if (m_shownRevision == m_terrain->getRevision())
        return;
    m_shownRevision = m_terrain->getRevision();
    auto& field = static_cast<hyxCollide::HeightField&>(*m_geometry->getShape());
    std::vector<float> const& heights = m_terrain->getHeights();
    std::copy(heights.begin(), heights.end(), field.heightsForWriting());
    field.heightsChanged();
}

} // namespace hyxSDK
