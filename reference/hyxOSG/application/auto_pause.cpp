// Compares the contacts of a step with the pairs, for the application.
#include "reference/hyxOSG/application/auto_pause.h"

#include "platform/hyxCollide/local_geometry_contact.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/application_implementation.h"

#include <stdexcept>

namespace hyxOSG {

template <class T>
void AutoPause::addPair(std::vector<Pair<T>>& pairs, T const* first, T const* second) {
    if (!first || !second)
        throw std::invalid_argument("an auto-pause pair needs two objects, not None");
    for (Pair<T> const& pair : pairs)
        if (pair.is(first, second))
            return;
    pairs.push_back({const_cast<T*>(first), const_cast<T*>(second), false});
}

void AutoPause::add(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    addPair(m_bodies, body1, body2);
}

void AutoPause::add(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2) {
    addPair(m_geometries, geometry1, geometry2);
}

void AutoPause::remove(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    std::erase_if(m_bodies, [=](auto const& pair) { return pair.is(body1, body2); });
}

void AutoPause::remove(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2) {
    std::erase_if(m_geometries, [=](auto const& pair) { return pair.is(geometry1, geometry2); });
}

bool AutoPause::beganToTouch(hyxSDK::Simulation const& simulation) {
    if (!m_enabled || (m_bodies.empty() && m_geometries.empty()))
        return false;
    hyxCollide::LocalGeometryContactVector const contacts = simulation.getSpace()->getGeometryContacts();
    bool began = false;
    auto const update = [&](auto& pair, auto objectOf) {
        bool touching = false;
        for (auto const& contact : contacts)
            touching = touching || (contact.getNumPoints() > 0 && pair.is(objectOf(contact, 0), objectOf(contact, 1)));
        began = began || (touching && !pair.touching);
        pair.touching = touching;
    };
    for (auto& pair : m_bodies)
        update(pair, [](auto const& contact, int side) { return contact.getRigidBody(side); });
    for (auto& pair : m_geometries)
        update(pair, [](auto const& contact, int side) { return contact.getGeometry(side); });
    return began;
}

void ExampleApplication::addAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    m_implementation->autoPause.add(body1, body2);
}

void ExampleApplication::addAutoPausePair(hyxCollide::Geometry const* geometry1,
                                          hyxCollide::Geometry const* geometry2) {
    m_implementation->autoPause.add(geometry1, geometry2);
}

void ExampleApplication::removeAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    m_implementation->autoPause.remove(body1, body2);
}

void ExampleApplication::removeAutoPausePair(hyxCollide::Geometry const* geometry1,
                                             hyxCollide::Geometry const* geometry2) {
    m_implementation->autoPause.remove(geometry1, geometry2);
}

void ExampleApplication::setEnableAutoPausing(bool enable) {
    m_implementation->autoPause.setEnable(enable);
}

bool ExampleApplication::getEnableAutoPausing() const {
    return m_implementation->autoPause.enabled();
}

} // namespace hyxOSG
