// Contacts and rays.
#include "platform/hyxCollide/space.h"

#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"

namespace {

using hyxCollide::Geometry;
using hyxCollide::LocalGeometryContact;
using hyxCollide::RayHit;
using hyxCollide::Space;

PyObject* geometries(Space const& self) {
    return vocabulary::to_shared_list(self.getGeometries());
}

PyObject* all_hits(Space const& self, hyx::Vec3 const& from, hyx::Vec3 const& to) {
    return vocabulary::to_list(self.castRayAll(from, to));
}

PyObject* find(Space const& self, hyx::Vec3 const& lower, hyx::Vec3 const& upper) {
    return vocabulary::to_shared_list(self.findGeometries(lower, upper));
}

PyObject* contacts(Space const& self) {
    return vocabulary::to_list(self.getGeometryContacts());
}

PyObject* contacts_of(Space const& self, Geometry const* geometry) {
    return vocabulary::to_list(self.getGeometryContacts(geometry));
}

PyObject* points(LocalGeometryContact const& self) {
    return vocabulary::to_list(self.points());
}

PyObject* hit_geometry(RayHit const& self) {
    return vocabulary::to_shared(self.geometry.get());
}

constexpr Declared space_rows[] = {
    FUNCTION(delete_ContactPoint, DELETE(hyxCollide::ContactPoint)),
    FUNCTION(ContactPoint_point_get, GET(hyxCollide::ContactPoint, point)),
    FUNCTION(ContactPoint_normal_get, GET(hyxCollide::ContactPoint, normal)),
    FUNCTION(ContactPoint_depth_get, GET(hyxCollide::ContactPoint, depth)),
    FUNCTION(ContactPoint_normalForce_get, GET(hyxCollide::ContactPoint, normalForce)),
    FUNCTION(ContactPoint_tangentialForce_get, GET(hyxCollide::ContactPoint, tangentialForce)),
    FUNCTION(ContactPoint_getForce, METHOD(hyxCollide::ContactPoint, getForce, () const)),
    REGISTER(hyxCollide::ContactPoint, ContactPoint),
    INIT(ContactPoint),
    FUNCTION(new_LocalGeometryContact, NEW(hyxCollide::LocalGeometryContact, ())),
    FUNCTION(delete_LocalGeometryContact, DELETE(hyxCollide::LocalGeometryContact)),
    FUNCTION(LocalGeometryContact_isValid, METHOD(hyxCollide::LocalGeometryContact, isValid, () const)),
    FUNCTION(LocalGeometryContact_getGeometry,
             SHARED(METHOD(hyxCollide::LocalGeometryContact, getGeometry, (hyx::UInt) const))),
    FUNCTION(LocalGeometryContact_getRigidBody,
             SHARED(METHOD(hyxCollide::LocalGeometryContact, getRigidBody, (hyx::UInt) const))),
    FUNCTION(LocalGeometryContact_points, ADAPTER(hyxCollide::LocalGeometryContact, points, points, () const)),
    FUNCTION(LocalGeometryContact_getNumPoints, METHOD(hyxCollide::LocalGeometryContact, getNumPoints, () const)),
    FUNCTION(LocalGeometryContact_getPoint,
             CONTAINER(METHOD(hyxCollide::LocalGeometryContact, getPoint, (hyx::UInt) const))),
    FUNCTION(LocalGeometryContact_getForce, METHOD(hyxCollide::LocalGeometryContact, getForce, () const)),
    REGISTER(hyxCollide::LocalGeometryContact, LocalGeometryContact),
    INIT(LocalGeometryContact),
    LIST_ROWS(hyx::Vector<hyxCollide::LocalGeometryContact>, LocalGeometryContactVector,
              hyxCollide::LocalGeometryContact const&, PLAIN),
    FUNCTION(new_RayHit, NEW(hyxCollide::RayHit, ())),
    FUNCTION(delete_RayHit, DELETE(hyxCollide::RayHit)),
    FUNCTION(RayHit_isValid, METHOD(hyxCollide::RayHit, isValid, () const)),
    FUNCTION(RayHit_getGeometry, ADAPTER(hyxCollide::RayHit, getGeometry, hit_geometry, () const)),
    FUNCTION(RayHit_point_get, GET(hyxCollide::RayHit, point)),
    FUNCTION(RayHit_normal_get, GET(hyxCollide::RayHit, normal)),
    FUNCTION(RayHit_distance_get, GET(hyxCollide::RayHit, distance)),
    FUNCTION(RayHit_triangle_get, GET(hyxCollide::RayHit, triangle)),
    REGISTER(hyxCollide::RayHit, RayHit),
    INIT(RayHit),
    FUNCTION(delete_Space, DELETE(hyxCollide::Space)),
    FUNCTION(Space_getGeometries, ADAPTER(hyxCollide::Space, getGeometries, geometries, () const)),
    FUNCTION(Space_getGeometryContacts, ADAPTER(hyxCollide::Space, getGeometryContacts, contacts, () const),
             ADAPTER(hyxCollide::Space, getGeometryContacts, contacts_of, (hyxCollide::Geometry const*) const)),
    FUNCTION(Space_getGeometryContact, METHOD(hyxCollide::Space, getGeometryContact,
                                              (hyxCollide::Geometry const*, hyxCollide::Geometry const*) const)),
    FUNCTION(Space_getNumContactPoints, METHOD(hyxCollide::Space, getNumContactPoints, () const)),
    FUNCTION(Space_castRay, METHOD(hyxCollide::Space, castRay, (hyx::Vec3 const&, hyx::Vec3 const&) const),
             METHOD(hyxCollide::Space, castRay, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::RigidBody const*) const)),
    FUNCTION(Space_castRayAll,
             ADAPTER(hyxCollide::Space, castRayAll, all_hits, (hyx::Vec3 const&, hyx::Vec3 const&) const)),
    FUNCTION(Space_findGeometries,
             ADAPTER(hyxCollide::Space, findGeometries, find, (hyx::Vec3 const&, hyx::Vec3 const&) const)),
    FUNCTION(Space_getSimulation, SHARED(METHOD(hyxCollide::Space, getSimulation, () const))),
    REGISTER(hyxCollide::Space, Space),
    INIT(Space),
};

} // namespace

ROWS(space_rows);
