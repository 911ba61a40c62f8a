// Colours, by number and by name.
#pragma once

#include "platform/hyx/objects/components.h"
#include "platform/hyx/values/string.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyx/values/vector.h"

namespace hyxRender {

/// A colour: red, green, blue and alpha from 0 to 1. Black and opaque at the start.
class Color : public hyx::Components<Color, float, 4> {
public:
    Color() = default;

    Color(float r, float g, float b, float a = 1) : r(r), g(g), b(b), a(a) {}

    Color(hyx::Vec4f const& color) : Color(color.x, color.y, color.z, color.w) {}

    explicit Color(hyx::Vec4 const& color) : Color(hyx::Vec4f(color)) {}

    /// A colour by its HTML name ("orange") or as "#rrggbb" or "#rrggbbaa". Throws std::invalid_argument for any other
    /// text.
    explicit Color(hyx::String const& name);

    explicit Color(char const* name) : Color(hyx::String(name)) {}

    /// Red, green, blue and alpha, from 0 to 1.
    hyx::Vec4f toVec4f() const { return hyx::Vec4f(r, g, b, a); }

    /// Red, green, blue and alpha, from 0 to 1.
    hyx::Vec4 toVec4() const { return hyx::Vec4(r, g, b, a); }

    /// Red, green, blue and alpha, from 0 to 1.
    void set(float red, float green, float blue, float alpha = 1) { *this = Color(red, green, blue, alpha); }

    static Color Black() { return Color(0, 0, 0); }

    static Color White() { return Color(1, 1, 1); }

    static Color Red() { return Color(1, 0, 0); }

    static Color Green() { return Color(0, 1, 0); }

    static Color Blue() { return Color(0, 0, 1); }

    static Color Yellow() { return Color(1, 1, 0); }

    static Color Orange() { return Color(1, 0.647f, 0); }

    static Color Gray() { return Color(0.5f, 0.5f, 0.5f); }

    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;
};

static_assert(sizeof(Color) == 4 * sizeof(float));

using ColorVector = hyx::Vector<Color>;

} // namespace hyxRender
