// Lets bodies stand on a terrain, press it down and dig in it.
#include "platform/hyxSDK/terrain_instance.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxTerrain/foot_points.h"
#include "reference/hyxTerrain/loaded_patch.h"
#include "reference/machinery/bullet/geometry_implementation.h"
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

namespace {

/// Seconds in which soil gives way to a load: what falls on it after it does not press much more than its weight.
constexpr Real pressingTime = 0.2;
/// Pa; less is forgotten.
constexpr Real leastPressure = 100;

} // namespace

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
        bytes(m_loads);
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
        press(findLoads(), timeStep);
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

// Each geometry presses evenly on the ground under it.
std::vector<TerrainInstance::Load> TerrainInstance::findLoads() const {
    std::map<std::pair<long, long>, Real> pressures;
    if (!getSimulation())
        return {};
    Vec3 const origin = m_terrain->getPosition();
    Real const size = m_terrain->getElementSize();
    auto const nx = static_cast<long>(m_terrain->getNumColumnsX()), ny = static_cast<long>(m_terrain->getNumColumnsY());
    for (auto const& contact : getSimulation()->getSpace()->getGeometryContacts(m_geometry.get())) {
        hyxCollide::Geometry const& other = *contact.getGeometry(contact.getGeometry(0) == m_geometry.get() ? 1 : 0);
        std::vector<Vec3> places = hyxTerrain::findFootPoints(other, *m_terrain);
        Real force = 0;
        for (auto const& point : contact.points()) {
            if (point.normalForce > 0)
                places.push_back(point.point);
            force += point.normalForce;
        }
        if (force <= 0)
            continue;
        for (Vec3& place : places)
            place -= origin;
        LoadedPatch const patch(std::move(places));
        auto const [lower, upper] = patch.bound();
        auto const from = [size](Real value) { return std::max(std::lround(std::max(value, 0.0) / size) - 1, 0l); };
        auto const to = [size](Real value, long count) {
            return std::min(std::lround(std::min(value / size, static_cast<Real>(count))) + 1, count - 1);
        };
        for (long y = from(lower.y); y <= to(upper.y, ny); ++y)
            for (long x = from(lower.x); x <= to(upper.x, nx); ++x)
                if (patch.bears(Vec3(x * size, y * size, 0), size)) {
                    Real& pressure = pressures[{y, x}];
                    pressure = std::max(pressure, force / patch.area());
                }
    }
    std::vector<Load> loads;
    for (auto const& [place, pressure] : pressures)
        loads.push_back({static_cast<hyx::UInt>(place.second), static_cast<hyx::UInt>(place.first), pressure});
    return loads;
}

// Both lists go by y, then by x.
void TerrainInstance::press(std::vector<Load> const& loads, Real timeStep) {
    Real const part = 1 - std::exp(-timeStep / pressingTime);
    auto const isBefore = [](Load const& a, Load const& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; };
    std::vector<Load> now;
    auto former = m_loads.begin();
    auto const leave = [&] {
        if (former->pressure *= 1 - part; former->pressure > leastPressure)
            now.push_back(*former);
        ++former;
    };
    for (Load const& load : loads) {
        while (former != m_loads.end() && isBefore(*former, load))
            leave();
        Real reached = 0;
        if (former != m_loads.end() && !isBefore(load, *former))
            reached = former++->pressure;
        reached += (load.pressure - reached) * part;
        now.push_back({load.x, load.y, reached});
        m_terrain->compact(load.x, load.y, reached);
    }
    while (former != m_loads.end())
        leave();
    m_loads.swap(now);
}

void TerrainInstance::moveSurface() {
    hyxTerrain::SoilMaterial const soil = m_terrain->getMaterial(0);
    m_geometry->implementation().groundFriction = std::tan(soil.reposeAngle);
    m_geometry->implementation().shearLength = soil.shearLength;
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
