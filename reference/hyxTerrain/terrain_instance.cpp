// Lets bodies stand on a terrain, press it down and dig in it.
#include "platform/hyxSDK/terrain_instance.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxTerrain/loaded_patch.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

namespace hyxSDK {

using hyx::Real;
using hyx::Vec3;
using hyxTerrain::LoadedPatch;

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
    hyx::keepState(this, [this](hyx::StateBytes& bytes) {
        hyx::exchangeState(m_terrain.get(), bytes);
        m_shownRevision = 0;
        moveSurface();
    });
}

TerrainInstance::~TerrainInstance() {
    hyx::forgetState(this);
}

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

// Each body presses evenly on the ground under and around its contact points.
void TerrainInstance::takeContacts() {
    if (!getSimulation())
        return;
    Vec3 const origin = m_terrain->getPosition();
    Real const size = m_terrain->getElementSize();
    auto const nx = static_cast<long>(m_terrain->getNumColumnsX()), ny = static_cast<long>(m_terrain->getNumColumnsY());
    std::map<std::pair<long, long>, Real> pressures;
    for (auto const& contact : getSimulation()->getSpace()->getGeometryContacts(m_geometry.get())) {
        std::vector<Vec3> places;
        Real force = 0;
        for (auto const& point : contact.points()) {
            places.push_back(point.point - origin);
            force += point.normalForce;
        }
        if (force <= 0)
            continue;
        LoadedPatch const patch(std::move(places));
        auto const [lower, upper] = patch.bound();
        Real const covered = std::max(patch.area(), size * size);
        for (long y = std::lround(lower.y / size); y <= std::lround(upper.y / size); ++y)
            for (long x = std::lround(lower.x / size); x <= std::lround(upper.x / size); ++x)
                if (x >= 0 && y >= 0 && x < nx && y < ny && patch.covers(Vec3(x * size, y * size, 0), size))
                    pressures[{y, x}] += force / covered;
    }
    for (auto const& [place, pressure] : pressures)
        m_terrain->compact(place.second, place.first, pressure);
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
