// Quadruples of numbers in double precision.
#pragma once

#include "platform/hyx/objects/components.h"
#include "platform/hyx/values/vec3.h"

namespace hyx {

/// Four numbers in double precision; as a colour red, green, blue and alpha from 0 to 1.
class Vec4 : public Components<Vec4, double, 4> {
public:
    Vec4() = default;

    Vec4(double x, double y, double z, double w) : x(x), y(y), z(z), w(w) {}

    /// All components take the same value.
    explicit Vec4(double value) : x(value), y(value), z(value), w(value) {}

    Vec4(Vec3 const& xyz, double w) : x(xyz.x), y(xyz.y), z(xyz.z), w(w) {}

    /// The first three numbers.
    Vec3 asVec3() const { return Vec3(x, y, z); }

    /// Takes over the four numbers.
    void set(double xValue, double yValue, double zValue, double wValue) {
        x = xValue;
        y = yValue;
        z = zValue;
        w = wValue;
    }

    double x = 0;
    double y = 0;
    double z = 0;
    double w = 0;
};

static_assert(sizeof(Vec4) == 4 * sizeof(double));

} // namespace hyx
