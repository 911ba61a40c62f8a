// The directions of a scanner's rays.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vector.h"

#include <LinearMath/btVector3.h>

#include <numbers>

namespace hyxSensor {

/// Rings above each other, columns one after the other from right to left about the X axis, Z up.
class RayFan {
public:
    hyx::UInt columns = 360;
    hyx::Real horizontal = 2 * std::numbers::pi;
    hyx::Real vertical = 0.5;
    hyx::RealVector elevations; ///< of each ring, radians

    RayFan() { spread(16); }

    void setResolution(hyx::UInt rings, hyx::UInt raysPerRing);
    void setFieldOfView(hyx::Real horizontal, hyx::Real vertical);
    /// None spreads the rings over the field of view.
    void setElevations(hyx::RealVector const& given);
    /// Of length one.
    btVector3 direction(hyx::UInt ring, hyx::UInt column) const;

private:
    void spread(hyx::UInt rings);

    bool m_given = false;
};

} // namespace hyxSensor
