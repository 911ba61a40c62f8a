// The shapes that are given by a few numbers.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "modules/hyxCollide/derived_shape.h"
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"

#define ROUND_SHAPE(class_, name_)                                                                        \
    FUNCTION(new_##name_, NEW(class_, (hyx::Real, hyx::Real))), FUNCTION(delete_##name_, DELETE(class_)), \
        FUNCTION(name_##_setRadius, METHOD(class_, setRadius, (hyx::Real))),                              \
        FUNCTION(name_##_getRadius, METHOD(class_, getRadius, () const)),                                 \
        FUNCTION(name_##_setHeight, METHOD(class_, setHeight, (hyx::Real))),                              \
        FUNCTION(name_##_getHeight, METHOD(class_, getHeight, () const)), REGISTER(class_, name_), INIT(name_)

namespace {

PyObject* part(hyxCollide::Compound const& self, hyx::UInt index) {
    return modules::to_derived(self.getShape(index));
}

constexpr Declared shapes_rows[] = {
    FUNCTION(delete_Shape, DELETE(hyxCollide::Shape)),
    FUNCTION(Shape_getType, METHOD(hyxCollide::Shape, getType, () const)),
    FUNCTION(Shape_getVolume, METHOD(hyxCollide::Shape, getVolume, () const)),
    FUNCTION(Shape_getBound, METHOD(hyxCollide::Shape, getBound, (hyx::Vec3&, hyx::Vec3&) const)),
    FUNCTION(Shape_getRevision, METHOD(hyxCollide::Shape, getRevision, () const)),
    REGISTER(hyxCollide::Shape, Shape),
    INIT(Shape),
    FUNCTION(new_Box, NEW(hyxCollide::Box, (hyx::Real, hyx::Real, hyx::Real)),
             NEW(hyxCollide::Box, (hyx::Vec3 const&))),
    FUNCTION(delete_Box, DELETE(hyxCollide::Box)),
    FUNCTION(Box_setHalfExtents, METHOD(hyxCollide::Box, setHalfExtents, (hyx::Vec3 const&))),
    FUNCTION(Box_getHalfExtents, METHOD(hyxCollide::Box, getHalfExtents, () const)),
    REGISTER(hyxCollide::Box, Box),
    INIT(Box),
    FUNCTION(new_Sphere, NEW(hyxCollide::Sphere, (hyx::Real))),
    FUNCTION(delete_Sphere, DELETE(hyxCollide::Sphere)),
    FUNCTION(Sphere_setRadius, METHOD(hyxCollide::Sphere, setRadius, (hyx::Real))),
    FUNCTION(Sphere_getRadius, METHOD(hyxCollide::Sphere, getRadius, () const)),
    REGISTER(hyxCollide::Sphere, Sphere),
    INIT(Sphere),
    ROUND_SHAPE(hyxCollide::Cylinder, Cylinder),
    ROUND_SHAPE(hyxCollide::Capsule, Capsule),
    ROUND_SHAPE(hyxCollide::Cone, Cone),
    FUNCTION(new_Plane, NEW(hyxCollide::Plane, ()), NEW(hyxCollide::Plane, (hyx::Plane const&)),
             NEW(hyxCollide::Plane, (hyx::Vec3 const&, hyx::Vec3 const&)),
             NEW(hyxCollide::Plane, (hyx::Real, hyx::Real, hyx::Real, hyx::Real))),
    FUNCTION(delete_Plane, DELETE(hyxCollide::Plane)),
    FUNCTION(Plane_setPlane, METHOD(hyxCollide::Plane, setPlane, (hyx::Plane const&))),
    FUNCTION(Plane_getPlane, METHOD(hyxCollide::Plane, getPlane, () const)),
    FUNCTION(Plane_getNormal, METHOD(hyxCollide::Plane, getNormal, () const)),
    REGISTER(hyxCollide::Plane, Plane),
    INIT(Plane),
    FUNCTION(new_Compound, NEW(hyxCollide::Compound, ())),
    FUNCTION(delete_Compound, DELETE(hyxCollide::Compound)),
    FUNCTION(Compound_add, METHOD(hyxCollide::Compound, add, (hyxCollide::Shape*, hyx::AffineMatrix4x4 const&),
                                  hyx::AffineMatrix4x4())),
    FUNCTION(Compound_getNumShapes, METHOD(hyxCollide::Compound, getNumShapes, () const)),
    FUNCTION(Compound_getShape, CONTAINER(ADAPTER(hyxCollide::Compound, getShape, part, (hyx::UInt) const))),
    FUNCTION(Compound_getLocalTransform, CONTAINER(METHOD(hyxCollide::Compound, getLocalTransform, (hyx::UInt) const))),
    REGISTER(hyxCollide::Compound, Compound),
    INIT(Compound),
};

} // namespace

ROWS(shapes_rows);
