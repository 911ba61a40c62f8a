// Three numbers in double precision.
#include "platform/hyx/values/vec3.h"

#include "binding/vocabulary/component_rows.h"
#include "platform/hyx/values/vec3f.h"

namespace {

hyx::Vec3* vec3_from_single(hyx::Vec3f const& single) {
    return new hyx::Vec3(single.toVec3());
}

std::string vec3_repr(hyx::Vec3 const& self) {
    return "hyx.Vec3(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec3_rows[] = {
    FUNCTION(new_Vec3, NEW(hyx::Vec3, ()), NEW(hyx::Vec3, (double, double, double)), NEW(hyx::Vec3, (double)),
             NEW(hyx::Vec3, (hyx::Vec3 const&)), MAKE(hyx::Vec3, vec3_from_single, (hyx::Vec3f const&)),
             CONTAINER(MAKE(hyx::Vec3, vocabulary::from_components<hyx::Vec3>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec3, Vec3, double),
    FUNCTION(Vec3___repr__, ADAPTER(hyx::Vec3, __repr__, vec3_repr, () const)),
    ARITHMETIC_ROWS(hyx::Vec3, Vec3, double),
    SCALE_ROW(hyx::Vec3, Vec3, double),
    LENGTH_ROWS(hyx::Vec3, Vec3),
    FUNCTION(Vec3_set, METHOD(hyx::Vec3, set, (double, double, double))),
    FUNCTION(Vec3_cross, METHOD(hyx::Vec3, cross, (hyx::Vec3 const&) const)),
    MEMBER_ROWS(hyx::Vec3, Vec3, x, double),
    MEMBER_ROWS(hyx::Vec3, Vec3, y, double),
    MEMBER_ROWS(hyx::Vec3, Vec3, z, double),
};

} // namespace

ROWS(vec3_rows);
