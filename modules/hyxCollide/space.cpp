// Contacts and rays.
#include "platform/hyxCollide/space.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"

namespace {

using hyxCollide::Geometry;
using hyxCollide::LocalGeometryContact;
using hyxCollide::LocalGeometryContactVector;
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

LocalGeometryContactVector* from_contacts(PyObject* contacts) {
    runtime::Reference const fast =
        runtime::Reference::take(PySequence_Fast(contacts, "expected a sequence of contacts"));
    if (!fast.get())
        throw vocabulary::PythonError();
    LocalGeometryContactVector list;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(fast.get()); ++i) {
        void* contact = nullptr;
        PyObject* item = PySequence_Fast_GET_ITEM(fast.get(), i);
        if (SWIG_Python_ConvertPtrAndOwn(item, &contact, vocabulary::descriptor<LocalGeometryContact>()) < 0 ||
            !contact) {
            PyErr_SetString(PyExc_TypeError, "expected a sequence of contacts");
            throw vocabulary::PythonError();
        }
        list.push_back(*static_cast<LocalGeometryContact*>(contact));
    }
    return new LocalGeometryContactVector(std::move(list));
}

unsigned long count(LocalGeometryContactVector const& self) {
    return self.size();
}

LocalGeometryContact get_item(LocalGeometryContactVector const& self, long index) {
    return self.at(static_cast<std::size_t>(index < 0 ? index + static_cast<long>(self.size()) : index));
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
    FUNCTION(new_LocalGeometryContactVector, NEW(hyx::Vector<hyxCollide::LocalGeometryContact>, ()),
             MAKE(hyx::Vector<hyxCollide::LocalGeometryContact>, from_contacts, (PyObject*))),
    FUNCTION(delete_LocalGeometryContactVector, DELETE(hyx::Vector<hyxCollide::LocalGeometryContact>)),
    FUNCTION(LocalGeometryContactVector___len__,
             ADAPTER(hyx::Vector<hyxCollide::LocalGeometryContact>, __len__, count, () const)),
    FUNCTION(LocalGeometryContactVector___getitem__,
             CONTAINER(ADAPTER(hyx::Vector<hyxCollide::LocalGeometryContact>, __getitem__, get_item, (long) const))),
    REGISTER(hyx::Vector<hyxCollide::LocalGeometryContact>, LocalGeometryContactVector),
    INIT(LocalGeometryContactVector),
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
