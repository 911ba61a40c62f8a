// Rows of pairs of numbers.
#include "platform/hyx/values/vec2.h"

#include "binding/vocabulary/component_rows.h"

namespace {

std::string vec2_repr(hyx::Vec2 const& self) {
    return "hyx.Vec2(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec2_rows[] = {
    FUNCTION(new_Vec2, NEW(hyx::Vec2, ()), NEW(hyx::Vec2, (double, double)), NEW(hyx::Vec2, (double)),
             NEW(hyx::Vec2, (hyx::Vec2 const&)),
             CONTAINER(MAKE(hyx::Vec2, vocabulary::from_components<hyx::Vec2>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec2, Vec2, double),
    FUNCTION(Vec2___repr__, ADAPTER(hyx::Vec2, __repr__, vec2_repr, () const)),
    ARITHMETIC_ROWS(hyx::Vec2, Vec2, double),
    SCALE_ROW(hyx::Vec2, Vec2, double),
    LENGTH_ROWS(hyx::Vec2, Vec2),
    FUNCTION(Vec2_set, METHOD(hyx::Vec2, set, (double, double))),
    MEMBER_ROWS(hyx::Vec2, Vec2, x, double),
    MEMBER_ROWS(hyx::Vec2, Vec2, y, double),
};

} // namespace

ROWS(vec2_rows);
