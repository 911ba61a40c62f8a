// Triples of numbers in single precision, as graphics hardware takes them.
#pragma once

#include "platform/hyx/objects/components.h"
#include "platform/hyx/values/vec3.h"

namespace hyx {

/// A triple in single precision.
class Vec3f : public Components<Vec3f, float, 3> {
public:
    Vec3f() = default;

    Vec3f(float x, float y, float z) : x(x), y(y), z(z) {}

    /// All components take the same value.
    explicit Vec3f(float value) : x(value), y(value), z(value) {}

    explicit Vec3f(Vec3 const& other)
        : x(static_cast<float>(other.x)), y(static_cast<float>(other.y)), z(static_cast<float>(other.z)) {}

    /// The same in double precision.
    Vec3 toVec3() const { return Vec3(x, y, z); }

    /// Takes over the three numbers.
    void set(float xValue, float yValue, float zValue) {
        x = xValue;
        y = yValue;
        z = zValue;
    }

    /// The vector product.
    Vec3f cross(Vec3f const& other) const {
        return Vec3f(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
    }

    float x = 0;
    float y = 0;
    float z = 0;
};

static_assert(sizeof(Vec3f) == 3 * sizeof(float));

} // namespace hyx
