// How mass is spread in shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <LinearMath/btTransform.h>

namespace hyxCollide {

/// How the volume of a shape, or of several together, is spread. Moments are those of a density of one.
struct ShapeMass {
    double volume = 0;
    btVector3 center{0, 0, 0};
    /// About the centre, along the axes of the coordinates that `center` is in.
    btMatrix3x3 inertia{0, 0, 0, 0, 0, 0, 0, 0, 0};

    /// Adds another spread that stands at `place` and has a density of its own; volume then counts mass.
    void add(ShapeMass const& other, btTransform const& place, double density);
};

ShapeMass massOf(Shape const& shape);

} // namespace hyxCollide
