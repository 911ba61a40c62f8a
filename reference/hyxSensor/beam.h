// What comes back of one pulse of light.
#pragma once

#include "platform/hyx/bodies/material.h"
#include "platform/hyx/values/range_real.h"
#include "reference/machinery/rays/ray_scene.h"

#include <map>
#include <vector>

namespace hyxSensor {

/// Light that came back from one distance.
struct Echo {
    hyx::Real distance = 0;
    hyx::Real intensity = 0;
    hyxCollide::Geometry* geometry = nullptr;
};

/// A beam of some width, which may go on through what it meets.
class Beam {
public:
    hyx::RangeReal range = hyx::RangeReal(0.1, 100); ///< metres
    hyx::UInt maxReturns = 1;
    hyx::Real divergence = 0; ///< the full angle, radians
    hyx::Real separation = 0.5;
    std::map<hyx::ref_ptr<hyx::Material>, hyx::Real> reflectivities, transparencies; ///< null for all others

    hyx::Real reflectivity(hyx::Material* material) const;
    hyx::Real transparency(hyx::Material* material) const;

    /// The returns of a pulse along `direction`, the nearest first, into `echoes`.
    void shoot(hyx::RayScene const& scene, hyx::RayScene::Moment& moment, btVector3 const& origin,
               btVector3 const& direction, std::vector<Echo>& echoes) const;

private:
    void follow(hyx::RayScene const& scene, hyx::RayScene::Moment& moment, btVector3 const& origin,
                btVector3 const& direction, hyx::Real light, std::vector<Echo>& echoes) const;
    void mergeNear(std::vector<Echo>& echoes) const;
};

} // namespace hyxSensor
