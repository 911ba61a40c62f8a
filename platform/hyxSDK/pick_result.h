// What was found under a point of the screen.
#pragma once

#include "platform/hyxCollide/local_geometry_contact.h"

namespace hyxSDK {

/// What is under a point of the screen: the geometries that a ray meets, the nearest first. Empty where there are none.
class PickResult {
public:
    PickResult() = default;

    /// Whether anything was hit.
    bool isValid() const { return !m_contacts.empty(); }

    /// How many surfaces were hit.
    hyx::UInt getNumContacts() const { return m_contacts.size(); }

    /// The nearest geometry and its body; null where nothing was met, and for a geometry without a body.
    hyxCollide::Geometry* getGeometry() const;
    /// The body of the nearest hit; null for none.
    hyx::RigidBody* getRigidBody() const;
    /// Where the ray met the nearest geometry, in the world; zero where nothing was met.
    hyx::Vec3 getPoint() const;
    /// Of length one, facing the viewer.
    hyx::Vec3 getNormal() const;

    /// Metres from the ray's start.
    hyx::Real getDistance() const { return m_distances.empty() ? 0 : m_distances.front(); }

    /// The distance of one contact. Throws std::out_of_range for a contact that is not there.
    hyx::Real getDistance(hyx::UInt index) const { return m_distances.at(index); }

    /// One contact a geometry met: geometry 0, and one point with the place and normal.
    hyxCollide::LocalGeometryContactVector const& getContacts() const { return m_contacts; }

    /// Adds what lies behind all that was added before.
    void add(hyxCollide::Geometry* geometry, hyx::Vec3 const& point, hyx::Vec3 const& normal, hyx::Real distance);

private:
    hyxCollide::LocalGeometryContactVector m_contacts;
    hyx::RealVector m_distances;
};

} // namespace hyxSDK
