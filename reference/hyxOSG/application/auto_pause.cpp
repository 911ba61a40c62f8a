/// Compares the contacts of a step with the pairs.
#include "reference/hyxOSG/application/auto_pause.h"

#include "platform/hyxCollide/local_geometry_contact.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"

#include <stdexcept>

namespace hyxOSG {

template <class T>
void AutoPause::addPair(std::vector<Pair<T>>& pairs, const T* first, const T* second) {
  if (!first || !second) throw std::invalid_argument("an auto-pause pair needs two objects, not None");
  for (const Pair<T>& pair : pairs)
    if (pair.is(first, second)) return;
  pairs.push_back({first, second, false});
}

void AutoPause::add(const hyx::RigidBody* body1, const hyx::RigidBody* body2) { addPair(m_bodies, body1, body2); }

void AutoPause::add(const hyxCollide::Geometry* geometry1, const hyxCollide::Geometry* geometry2) {
  addPair(m_geometries, geometry1, geometry2);
}

void AutoPause::remove(const hyx::RigidBody* body1, const hyx::RigidBody* body2) {
  std::erase_if(m_bodies, [=](const auto& pair) { return pair.is(body1, body2); });
}

void AutoPause::remove(const hyxCollide::Geometry* geometry1, const hyxCollide::Geometry* geometry2) {
  std::erase_if(m_geometries, [=](const auto& pair) { return pair.is(geometry1, geometry2); });
}

bool AutoPause::beganToTouch(const hyxSDK::Simulation& simulation) {
  if (!m_enabled || (m_bodies.empty() && m_geometries.empty())) return false;
  const hyxCollide::LocalGeometryContactVector contacts = simulation.getSpace()->getGeometryContacts();
  bool began = false;
  const auto update = [&](auto& pair, auto objectOf) {
    bool touching = false;
    for (const auto& contact : contacts)
      touching = touching || (contact.getNumPoints() > 0 && pair.is(objectOf(contact, 0), objectOf(contact, 1)));
    began = began || (touching && !pair.touching);
    pair.touching = touching;
  };
  for (auto& pair : m_bodies) update(pair, [](const auto& contact, int side) { return contact.getRigidBody(side); });
  for (auto& pair : m_geometries) update(pair, [](const auto& contact, int side) { return contact.getGeometry(side); });
  return began;
}

}  // namespace hyxOSG
