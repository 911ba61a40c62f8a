// Asking a simulation what touches what, and what a ray meets.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/local_geometry_contact.h"

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxCollide {

/// What a ray met.
struct RayHit {
    /// Null where the ray met nothing.
    hyx::ref_ptr<Geometry> geometry;
    hyx::Vec3 point;
    /// Of length one, facing the ray's start.
    hyx::Vec3 normal;
    /// Metres from the ray's start.
    hyx::Real distance = 0;
    /// The triangle of a mesh; ~0 for other shapes.
    hyx::UInt triangle = ~hyx::UInt(0);

    /// Whether anything was hit.
    bool isValid() const { return geometry.valid(); }
};

/// The collision side of a simulation: which geometries are there, which touch, what a ray meets.
class Space : public hyx::Object {
public:
    /// All geometries of the simulation's bodies, and those standing alone.
    GeometryPtrVector const& getGeometries() const;

    /// All contacts of the last step.
    LocalGeometryContactVector getGeometryContacts() const;
    /// The contacts of one geometry in the last step. Null gives none.
    LocalGeometryContactVector getGeometryContacts(Geometry const* geometry) const;
    /// The contact of two geometries in the last step; an empty one where they do not touch.
    LocalGeometryContact getGeometryContact(Geometry const* geometry1, Geometry const* geometry2) const;
    /// Has these in place of the contacts of the last step, until the next step or until a body comes or goes: what a
    /// playback shows.
    void showContacts(LocalGeometryContactVector contacts);
    /// The number of contact points of the last step.
    hyx::UInt getNumContactPoints() const;

    /// The first geometry on the way from one point to another.
    RayHit castRay(hyx::Vec3 const& from, hyx::Vec3 const& to) const;
    /// As above, leaving out one geometry's body (a sensor's own mount). Null leaves out nothing.
    RayHit castRay(hyx::Vec3 const& from, hyx::Vec3 const& to, hyx::RigidBody const* ignored) const;
    /// All geometries on the way, the nearest first.
    hyx::Vector<RayHit> castRayAll(hyx::Vec3 const& from, hyx::Vec3 const& to) const;

    /// Geometries whose boxes overlap the given one.
    GeometryPtrVector findGeometries(hyx::Vec3 const& lower, hyx::Vec3 const& upper) const;

    /// The simulation that the space is of.
    hyxSDK::Simulation* getSimulation() const { return m_simulation; }

private:
    friend class hyxSDK::Simulation;

    explicit Space(hyxSDK::Simulation* simulation) : m_simulation(simulation) {}

    ~Space() override = default;

    hyxSDK::Simulation* m_simulation;
};

} // namespace hyxCollide
