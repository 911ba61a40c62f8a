// Pairs of whole numbers.
#pragma once

#include "platform/hyx/objects/components.h"

namespace hyx {

/// Two whole numbers, such as a resolution or a cell of a grid.
class Vec2u : public Components<Vec2u, unsigned long, 2> {
public:
    Vec2u() = default;

    Vec2u(unsigned long x, unsigned long y) : x(x), y(y) {}

    /// All components take the same value.
    explicit Vec2u(unsigned long value) : x(value), y(value) {}

    /// Takes over both numbers.
    void set(unsigned long xValue, unsigned long yValue) {
        x = xValue;
        y = yValue;
    }

    unsigned long x = 0;
    unsigned long y = 0;
};

static_assert(sizeof(Vec2u) == 2 * sizeof(unsigned long));

} // namespace hyx
