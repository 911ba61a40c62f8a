// The pieces that a pressure field consists of.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

namespace hyxModel {

/// A piece of a contact surface with the pressure at its corners.
struct TriangleData {
    hyx::Vec3 vertices[3];              ///< metres, in the frame of the surface
    hyx::Vec3 normal;                   ///< unit, out of the surface
    hyx::Real pressures[3] = {0, 0, 0}; ///< pascals, never negative

    /// Surface in square metres.
    hyx::Real getArea() const;
    /// Pressure integrated over the surface, in newtons along the normal.
    hyx::Real getForce() const;
};

} // namespace hyxModel
