// Three numbers in single precision.
#include "platform/hyx/values/vec3f.h"

#include "binding/vocabulary/component_rows.h"

namespace {

std::string vec3f_repr(hyx::Vec3f const& self) {
    return "hyx.Vec3f(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec3f_rows[] = {
    FUNCTION(new_Vec3f, NEW(hyx::Vec3f, ()), NEW(hyx::Vec3f, (float, float, float)), NEW(hyx::Vec3f, (float)),
             NEW(hyx::Vec3f, (hyx::Vec3f const&)), NEW(hyx::Vec3f, (hyx::Vec3 const&)),
             CONTAINER(MAKE(hyx::Vec3f, vocabulary::from_components<hyx::Vec3f>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec3f, Vec3f, float),
    FUNCTION(Vec3f___repr__, ADAPTER(hyx::Vec3f, __repr__, vec3f_repr, () const)),
    ARITHMETIC_ROWS(hyx::Vec3f, Vec3f, float),
    SCALE_ROW(hyx::Vec3f, Vec3f, float),
    LENGTH_ROWS(hyx::Vec3f, Vec3f),
    FUNCTION(Vec3f_set, METHOD(hyx::Vec3f, set, (float, float, float))),
    FUNCTION(Vec3f_cross, METHOD(hyx::Vec3f, cross, (hyx::Vec3f const&) const)),
    FUNCTION(Vec3f_toVec3, METHOD(hyx::Vec3f, toVec3, () const)),
    MEMBER_ROWS(hyx::Vec3f, Vec3f, x, float),
    MEMBER_ROWS(hyx::Vec3f, Vec3f, y, float),
    MEMBER_ROWS(hyx::Vec3f, Vec3f, z, float),
};

} // namespace

ROWS(vec3f_rows);
