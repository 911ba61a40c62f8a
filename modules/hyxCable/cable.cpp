// Rows of the cables.
#include "platform/hyxCable/cable.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace {

PyObject* points(hyxCable::Cable const& self) {
    return vocabulary::to_list(self.getPoints());
}

hyxCable::CableProperties cable_properties(hyxCable::Cable const& self) {
    return self.getProperties();
}

constexpr Declared cable_rows[] = {
    FUNCTION(new_Cable, NEW(hyxCable::Cable, (hyx::Real, hyx::Real, hyxCable::CableProperties const&),
                            hyxCable::CableProperties())),
    FUNCTION(Cable_add, METHOD(hyxCable::Cable, add, (hyx::Vec3 const&)),
             METHOD(hyxCable::Cable, add, (hyx::RigidBody*, hyx::Vec3 const&))),
    FUNCTION(Cable_initialize, METHOD(hyxCable::Cable, initialize, ())),
    FUNCTION(Cable_getRadius, METHOD(hyxCable::Cable, getRadius, () const)),
    FUNCTION(Cable_getProperties, ADAPTER(hyxCable::Cable, getProperties, cable_properties, () const)),
    FUNCTION(Cable_setGravity, METHOD(hyxCable::Cable, setGravity, (hyx::Vec3 const&))),
    FUNCTION(Cable_getGravity, METHOD(hyxCable::Cable, getGravity, () const)),
    FUNCTION(Cable_setEndPoint, METHOD(hyxCable::Cable, setEndPoint, (bool, hyx::Vec3 const&))),
    FUNCTION(Cable_setEndTwist, METHOD(hyxCable::Cable, setEndTwist, (hyx::Real))),
    FUNCTION(Cable_getEndTwist, METHOD(hyxCable::Cable, getEndTwist, () const)),
    FUNCTION(Cable_getNumSegments, METHOD(hyxCable::Cable, getNumSegments, () const)),
    FUNCTION(Cable_getPoints, ADAPTER(hyxCable::Cable, getPoints, points, () const)),
    FUNCTION(Cable_getLoad, METHOD(hyxCable::Cable, getLoad, (hyx::Index) const)),
    FUNCTION(Cable_getLength, METHOD(hyxCable::Cable, getLength, () const)),
    FUNCTION(Cable_getRevision, METHOD(hyxCable::Cable, getRevision, () const)),
    FUNCTION(Cable_step, METHOD(hyxCable::Cable, step, (hyx::Real))),
    FUNCTION(delete_Cable, DELETE(hyxCable::Cable)),
    REGISTER(hyxCable::Cable, Cable),
    INIT(Cable),
    FUNCTION(new_CableProperties, NEW(hyxCable::CableProperties, ())),
    FUNCTION(CableProperties_youngModulus_get, GET(hyxCable::CableProperties, youngModulus)),
    FUNCTION(CableProperties_youngModulus_set, SET(hyxCable::CableProperties, youngModulus, (double))),
    FUNCTION(CableProperties_shearModulus_get, GET(hyxCable::CableProperties, shearModulus)),
    FUNCTION(CableProperties_shearModulus_set, SET(hyxCable::CableProperties, shearModulus, (double))),
    FUNCTION(CableProperties_density_get, GET(hyxCable::CableProperties, density)),
    FUNCTION(CableProperties_density_set, SET(hyxCable::CableProperties, density, (double))),
    FUNCTION(CableProperties_damping_get, GET(hyxCable::CableProperties, damping)),
    FUNCTION(CableProperties_damping_set, SET(hyxCable::CableProperties, damping, (double))),
    FUNCTION(delete_CableProperties, DELETE(hyxCable::CableProperties)),
    REGISTER(hyxCable::CableProperties, CableProperties),
    INIT(CableProperties),
    FUNCTION(SegmentLoad_tension_get, GET(hyxCable::SegmentLoad, tension)),
    FUNCTION(SegmentLoad_curvature_get, GET(hyxCable::SegmentLoad, curvature)),
    FUNCTION(SegmentLoad_twist_get, GET(hyxCable::SegmentLoad, twist)),
    FUNCTION(delete_SegmentLoad, DELETE(hyxCable::SegmentLoad)),
    REGISTER(hyxCable::SegmentLoad, SegmentLoad),
    INIT(SegmentLoad),
};

} // namespace

ROWS(cable_rows);
