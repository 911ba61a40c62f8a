// Triples of numbers in double precision, in which physics computes.
#pragma once

#include "platform/hyx/objects/components.h"

namespace hyx {

/// A point, direction or other triple, in double precision.
class Vec3 : public Components<Vec3, double, 3> {
public:
    Vec3() = default;

    Vec3(double x, double y, double z) : x(x), y(y), z(z) {}

    /// All components take the same value.
    explicit Vec3(double value) : x(value), y(value), z(value) {}

    /// Takes over the three numbers.
    void set(double xValue, double yValue, double zValue) {
        x = xValue;
        y = yValue;
        z = zValue;
    }

    /// The vector product.
    Vec3 cross(Vec3 const& other) const {
        return Vec3(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
    }

    double x = 0;
    double y = 0;
    double z = 0;
};

static_assert(sizeof(Vec3) == 3 * sizeof(double));

} // namespace hyx
