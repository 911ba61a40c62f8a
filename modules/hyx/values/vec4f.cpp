// Four numbers in single precision.
#include "platform/hyx/values/vec4f.h"

#include "binding/vocabulary/component_rows.h"

namespace {

std::string vec4f_repr(hyx::Vec4f const& self) {
    return "hyx.Vec4f(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec4f_rows[] = {
    FUNCTION(new_Vec4f, NEW(hyx::Vec4f, ()), NEW(hyx::Vec4f, (float, float, float, float)), NEW(hyx::Vec4f, (float)),
             NEW(hyx::Vec4f, (hyx::Vec4f const&)), NEW(hyx::Vec4f, (hyx::Vec4 const&)),
             CONTAINER(MAKE(hyx::Vec4f, vocabulary::from_components<hyx::Vec4f>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec4f, Vec4f, float),
    FUNCTION(Vec4f___repr__, ADAPTER(hyx::Vec4f, __repr__, vec4f_repr, () const)),
    ARITHMETIC_ROWS(hyx::Vec4f, Vec4f, float),
    SCALE_ROW(hyx::Vec4f, Vec4f, float),
    LENGTH_ROWS(hyx::Vec4f, Vec4f),
    FUNCTION(Vec4f_set, METHOD(hyx::Vec4f, set, (float, float, float, float))),
    FUNCTION(Vec4f_toVec4, METHOD(hyx::Vec4f, toVec4, () const)),
    MEMBER_ROWS(hyx::Vec4f, Vec4f, x, float),
    MEMBER_ROWS(hyx::Vec4f, Vec4f, y, float),
    MEMBER_ROWS(hyx::Vec4f, Vec4f, z, float),
    MEMBER_ROWS(hyx::Vec4f, Vec4f, w, float),
};

} // namespace

ROWS(vec4f_rows);
