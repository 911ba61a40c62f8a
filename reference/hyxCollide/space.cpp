// Puts questions about contacts and rays to the simulation's world.
#include "platform/hyxCollide/space.h"

#include "reference/hyxSDK/simulation_implementation.h"

#include <stdexcept>
#include <utility>

namespace hyxCollide {

namespace {

hyxSDK::Simulation::Implementation& requireSimulation(hyxSDK::Simulation* simulation) {
    if (!simulation)
        throw std::runtime_error("the simulation of this space has ended");
    return simulation->implementation();
}

} // namespace

GeometryPtrVector const& Space::getGeometries() const {
    hyxSDK::Simulation::Implementation& simulation = requireSimulation(m_simulation);
    if (simulation.geometriesOutdated)
        simulation.rebuildGeometries();
    return simulation.geometries;
}

LocalGeometryContactVector Space::getGeometryContacts() const {
    return requireSimulation(m_simulation).world.contacts(nullptr, nullptr);
}

LocalGeometryContactVector Space::getGeometryContacts(Geometry const* geometry) const {
    return geometry ? requireSimulation(m_simulation).world.contacts(geometry, nullptr) : LocalGeometryContactVector();
}

LocalGeometryContact Space::getGeometryContact(Geometry const* geometry1, Geometry const* geometry2) const {
    if (!geometry1 || !geometry2)
        return LocalGeometryContact();
    LocalGeometryContactVector const found = requireSimulation(m_simulation).world.contacts(geometry1, geometry2);
    return found.empty() ? LocalGeometryContact() : found.front();
}

void Space::showContacts(LocalGeometryContactVector contacts) {
    hyxSDK::Simulation::Implementation& simulation = requireSimulation(m_simulation);
    simulation.world.showContacts(std::move(contacts));
    simulation.statistics.numContactPoints = simulation.world.numContactPoints();
}

hyx::UInt Space::getNumContactPoints() const {
    return requireSimulation(m_simulation).world.numContactPoints();
}

RayHit Space::castRay(hyx::Vec3 const& from, hyx::Vec3 const& to) const {
    return castRay(from, to, nullptr);
}

RayHit Space::castRay(hyx::Vec3 const& from, hyx::Vec3 const& to, hyx::RigidBody const* ignored) const {
    auto const hits = requireSimulation(m_simulation).world.castRay(from, to, ignored, false);
    return hits.empty() ? RayHit() : hits.front();
}

hyx::Vector<RayHit> Space::castRayAll(hyx::Vec3 const& from, hyx::Vec3 const& to) const {
    return requireSimulation(m_simulation).world.castRay(from, to, nullptr, true);
}

GeometryPtrVector Space::findGeometries(hyx::Vec3 const& lower, hyx::Vec3 const& upper) const {
    return requireSimulation(m_simulation).world.findGeometries(lower, upper);
}

} // namespace hyxCollide
