// How large and how thin shapes are.
#pragma once

#include "reference/machinery/bullet/collision_carrier.h"

class btCollisionShape;

namespace hyx {

/// Half of what is least thick of a shape; 0 of a surface.
double coreOf(btCollisionShape const& shape);

/// Writes down the sizes of what the carrier's object has for a shape.
void measureShape(hyxCollide::CollisionCarrier& carrier, btCollisionShape const& shape);

} // namespace hyx
