// Where the attachment frames of a joint are.
#pragma once

#include "reference/machinery/bullet/constraint_implementation.h"

#include <cmath>

namespace hyx {

struct Constraint::Implementation::Pose {
    btTransform first;
    btTransform second;

    btVector3 axis(int index) const { return first.getBasis().getColumn(index); }

    btVector3 gap() const { return first.getOrigin() - second.getOrigin(); }

    /// The direction of the line from the second origin to the first; the Z axis where they coincide.
    btVector3 line() const { return gap().length2() > 1e-24 ? gap().normalized() : axis(2); }

    /// How far a free direction has gone; an angle without its full turns.
    double position(Free kind) const {
        if (kind == ALONG_Z)
            return gap().dot(axis(2));
        if (kind == ALONG_LINE)
            return gap().length();
        btVector3 const x = second.getBasis().getColumn(0);
        return std::atan2(-x.dot(axis(1)), x.dot(axis(0)));
    }
};

} // namespace hyx
