// Pairs of numbers in double precision.
#pragma once

#include "platform/hyx/objects/components.h"

namespace hyx {

/// Two numbers: a point or direction in the plane.
class Vec2 : public Components<Vec2, double, 2> {
public:
    Vec2() = default;

    Vec2(double x, double y) : x(x), y(y) {}

    /// All components take the same value.
    explicit Vec2(double value) : x(value), y(value) {}

    /// Takes over both numbers.
    void set(double xValue, double yValue) {
        x = xValue;
        y = yValue;
    }

    double x = 0;
    double y = 0;
};

static_assert(sizeof(Vec2) == 2 * sizeof(double));

} // namespace hyx
