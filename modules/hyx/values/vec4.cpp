// Four numbers in double precision.
#include "platform/hyx/values/vec4.h"

#include "binding/vocabulary/component_rows.h"
#include "platform/hyx/values/vec4f.h"

namespace {

hyx::Vec4* vec4_from_single(hyx::Vec4f const& single) {
    return new hyx::Vec4(single.toVec4());
}

std::string vec4_repr(hyx::Vec4 const& self) {
    return "hyx.Vec4(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec4_rows[] = {
    FUNCTION(new_Vec4, NEW(hyx::Vec4, ()), NEW(hyx::Vec4, (double, double, double, double)), NEW(hyx::Vec4, (double)),
             NEW(hyx::Vec4, (hyx::Vec4 const&)), NEW(hyx::Vec4, (hyx::Vec3 const&, double)),
             MAKE(hyx::Vec4, vec4_from_single, (hyx::Vec4f const&)),
             CONTAINER(MAKE(hyx::Vec4, vocabulary::from_components<hyx::Vec4>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec4, Vec4, double),
    FUNCTION(Vec4___repr__, ADAPTER(hyx::Vec4, __repr__, vec4_repr, () const)),
    ARITHMETIC_ROWS(hyx::Vec4, Vec4, double),
    SCALE_ROW(hyx::Vec4, Vec4, double),
    LENGTH_ROWS(hyx::Vec4, Vec4),
    FUNCTION(Vec4_set, METHOD(hyx::Vec4, set, (double, double, double, double))),
    FUNCTION(Vec4_asVec3, METHOD(hyx::Vec4, asVec3, () const)),
    MEMBER_ROWS(hyx::Vec4, Vec4, x, double),
    MEMBER_ROWS(hyx::Vec4, Vec4, y, double),
    MEMBER_ROWS(hyx::Vec4, Vec4, z, double),
    MEMBER_ROWS(hyx::Vec4, Vec4, w, double),
};

} // namespace

ROWS(vec4_rows);
