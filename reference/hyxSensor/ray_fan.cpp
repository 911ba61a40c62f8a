// Works out the directions of a scanner's rays.
#include "reference/hyxSensor/ray_fan.h"

#include <cmath>

namespace hyxSensor {

using hyx::Real;

void RayFan::setResolution(hyx::UInt rings, hyx::UInt raysPerRing) {
    columns = raysPerRing;
    if (!m_given || rings != elevations.size())
        spread(rings);
}

void RayFan::setFieldOfView(Real across, Real up) {
    horizontal = across;
    vertical = up;
    if (!m_given)
        spread(elevations.size());
}

void RayFan::setElevations(hyx::RealVector const& given) {
    if (given.empty())
        spread(elevations.size());
    else
        elevations = given;
    m_given = !given.empty();
}

void RayFan::spread(hyx::UInt rings) {
    m_given = false;
    elevations.resize(rings);
    for (hyx::UInt ring = 0; ring < rings; ++ring)
        elevations[ring] = rings > 1 ? vertical * (static_cast<Real>(ring) / static_cast<Real>(rings - 1) - 0.5) : 0;
}

// A full circle does not shoot its last ray over its first one.
btVector3 RayFan::direction(hyx::UInt ring, hyx::UInt column) const {
    bool const full = horizontal > 2 * std::numbers::pi - 1e-9;
    Real const steps = static_cast<Real>(full ? columns : columns - 1);
    Real const azimuth = columns > 1 ? horizontal * (static_cast<Real>(column) / steps - 0.5) : 0;
    Real const elevation = elevations[ring];
    return btVector3(std::cos(elevation) * std::cos(azimuth), std::cos(elevation) * std::sin(azimuth),
                     std::sin(elevation));
}

} // namespace hyxSensor
