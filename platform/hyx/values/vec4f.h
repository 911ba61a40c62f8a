// Quadruples of numbers in single precision, colours above all.
#pragma once

#include "platform/hyx/objects/components.h"
#include "platform/hyx/values/vec4.h"

namespace hyx {

/// Four numbers in single precision; as a colour red, green, blue and alpha from 0 to 1.
class Vec4f : public Components<Vec4f, float, 4> {
public:
    Vec4f() = default;

    Vec4f(float x, float y, float z, float w) : x(x), y(y), z(z), w(w) {}

    /// All components take the same value.
    explicit Vec4f(float value) : x(value), y(value), z(value), w(value) {}

    explicit Vec4f(Vec4 const& other)
        : x(static_cast<float>(other.x)),
          y(static_cast<float>(other.y)),
          z(static_cast<float>(other.z)),
          w(static_cast<float>(other.w)) {}

    /// The same in double precision.
    Vec4 toVec4() const { return Vec4(x, y, z, w); }

    /// Takes over the four numbers.
    void set(float xValue, float yValue, float zValue, float wValue) {
        x = xValue;
        y = yValue;
        z = zValue;
        w = wValue;
    }

    float x = 0;
    float y = 0;
    float z = 0;
    float w = 0;
};

static_assert(sizeof(Vec4f) == 4 * sizeof(float));

} // namespace hyx
