// Rows of the colours.
#include "platform/hyxRender/color.h"

#include "binding/vocabulary/component_rows.h"

namespace {

std::string color_repr(hyxRender::Color const& self) {
    return "hyxRender.Color(" + vocabulary::components_text(self) + ")";
}

constexpr Declared color_rows[] = {
    FUNCTION(new_Color, NEW(hyxRender::Color, ()), NEW(hyxRender::Color, (float, float, float, float), 1.0f),
             NEW(hyxRender::Color, (hyx::String const&)), NEW(hyxRender::Color, (hyx::Vec4f const&)),
             NEW(hyxRender::Color, (hyx::Vec4 const&)), NEW(hyxRender::Color, (hyxRender::Color const&)),
             CONTAINER(MAKE(hyxRender::Color, vocabulary::from_components<hyxRender::Color>, (PyObject*)))),
    COMPONENT_ROWS(hyxRender::Color, Color, float),
    ARITHMETIC_ROWS(hyxRender::Color, Color, float),
    SCALE_ROW(hyxRender::Color, Color, float),
    FUNCTION(Color___repr__, ADAPTER(hyxRender::Color, __repr__, color_repr, () const)),
    FUNCTION(Color_toVec4f, METHOD(hyxRender::Color, toVec4f, () const)),
    FUNCTION(Color_toVec4, METHOD(hyxRender::Color, toVec4, () const)),
    FUNCTION(Color_set, METHOD(hyxRender::Color, set, (float, float, float, float), 1.0f)),
    FUNCTION(Color_Black, STATIC(hyxRender::Color, Black, ())),
    FUNCTION(Color_White, STATIC(hyxRender::Color, White, ())),
    FUNCTION(Color_Red, STATIC(hyxRender::Color, Red, ())),
    FUNCTION(Color_Green, STATIC(hyxRender::Color, Green, ())),
    FUNCTION(Color_Blue, STATIC(hyxRender::Color, Blue, ())),
    FUNCTION(Color_Yellow, STATIC(hyxRender::Color, Yellow, ())),
    FUNCTION(Color_Orange, STATIC(hyxRender::Color, Orange, ())),
    FUNCTION(Color_Gray, STATIC(hyxRender::Color, Gray, ())),
    MEMBER_ROWS(hyxRender::Color, Color, r, float),
    MEMBER_ROWS(hyxRender::Color, Color, g, float),
    MEMBER_ROWS(hyxRender::Color, Color, b, float),
    MEMBER_ROWS(hyxRender::Color, Color, a, float),
};

} // namespace

ROWS(color_rows);
