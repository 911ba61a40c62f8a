// Two whole numbers.
#include "platform/hyx/values/vec2u.h"

#include "binding/vocabulary/component_rows.h"

namespace {

std::string vec2u_repr(hyx::Vec2u const& self) {
    return "hyx.Vec2u(" + vocabulary::components_text(self) + ")";
}

constexpr Declared vec2u_rows[] = {
    FUNCTION(new_Vec2u, NEW(hyx::Vec2u, ()), NEW(hyx::Vec2u, (unsigned long, unsigned long)),
             NEW(hyx::Vec2u, (unsigned long)), NEW(hyx::Vec2u, (hyx::Vec2u const&)),
             CONTAINER(MAKE(hyx::Vec2u, vocabulary::from_components<hyx::Vec2u>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Vec2u, Vec2u, unsigned long),
    FUNCTION(Vec2u___repr__, ADAPTER(hyx::Vec2u, __repr__, vec2u_repr, () const)),
    FUNCTION(Vec2u_set, METHOD(hyx::Vec2u, set, (unsigned long, unsigned long))),
    MEMBER_ROWS(hyx::Vec2u, Vec2u, x, unsigned long),
    MEMBER_ROWS(hyx::Vec2u, Vec2u, y, unsigned long),
};

} // namespace

ROWS(vec2u_rows);
