// Follows the rays of a beam and puts together what a detector tells apart.
#include "reference/hyxSensor/beam.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyxSensor {

using hyx::Real;

namespace {

constexpr int raysOfWideBeam = 7;
constexpr Real faintest = 1e-4;      // of the light, which is no longer followed
constexpr Real behindSurface = 1e-6; // metres after which a ray goes on
constexpr int mostSurfaces = 64;

/// What is known of a material, else of all others, else `otherwise`.
Real valueOf(std::map<hyx::ref_ptr<hyx::Material>, Real> const& values, hyx::Material* material, Real otherwise) {
    for (hyx::Material* const key : {material, static_cast<hyx::Material*>(nullptr)})
        for (auto const& [known, value] : values)
            if (known.get() == key)
                return value;
    return otherwise;
}

} // namespace

Real Beam::reflectivity(hyx::Material* material) const {
    return valueOf(reflectivities, material, 1);
}

Real Beam::transparency(hyx::Material* material) const {
    return valueOf(transparencies, material, 0);
}

void Beam::shoot(hyx::RayScene const& scene, hyx::RayScene::Moment& moment, btVector3 const& origin,
                 btVector3 const& direction, std::vector<Echo>& echoes) const {
    echoes.clear();
    if (divergence == 0) {
        follow(scene, moment, origin, direction, 1, echoes);
    } else {
        // Seven rays for seven parts of the disc of equal area: one in its middle, six around.
        follow(scene, moment, origin, direction, 1.0 / raysOfWideBeam, echoes);
        btVector3 side;
        btVector3 up;
        btPlaneSpace1(direction, side, up);
        Real const radius = std::tan(divergence / 2) * std::sqrt((1.0 / raysOfWideBeam + 1) / 2);
        for (int i = 1; i < raysOfWideBeam; ++i) {
            Real const angle = 2 * std::numbers::pi * i / (raysOfWideBeam - 1);
            btVector3 const aside = (side * std::cos(angle) + up * std::sin(angle)) * radius;
            follow(scene, moment, origin, (direction + aside).normalized(), 1.0 / raysOfWideBeam, echoes);
        }
    }
    if (echoes.size() > 1)
        mergeNear(echoes);
}

void Beam::follow(hyx::RayScene const& scene, hyx::RayScene::Moment& moment, btVector3 const& origin,
                  btVector3 const& direction, Real light, std::vector<Echo>& echoes) const {
    Real travelled = 0;
    for (int i = 0; i < mostSurfaces && light > faintest && travelled < range.upper(); ++i) {
        auto const hit = scene.cast(moment, origin + direction * travelled, direction, range.upper() - travelled);
        if (!hit)
            return;
        Real const distance = travelled + hit->distance;
        hyxCollide::Geometry* const geometry = hit->target->geometry;
        hyx::Material* const material = geometry->getMaterial();
        if (distance >= range.lower()) {
            Real const fading = 1 / (1 + distance * 5 / range.upper());
            Real const cosine = std::abs(hit->normal.dot(direction));
            echoes.push_back({distance, light * reflectivity(material) * cosine * fading, geometry});
        }
        light *= transparency(material);
        travelled = distance + behindSurface;
    }
}

void Beam::mergeNear(std::vector<Echo>& echoes) const {
    std::sort(echoes.begin(), echoes.end(), [](Echo const& a, Echo const& b) { return a.distance < b.distance; });
    std::vector<Echo> merged;
    Real first = 0;
    Real strongest = 0;
    for (Echo const& echo : echoes) {
        if (merged.empty() || echo.distance - first > separation) {
            merged.push_back(echo);
            first = echo.distance;
            strongest = echo.intensity;
            continue;
        }
        Echo& last = merged.back();
        Real const sum = last.intensity + echo.intensity;
        if (sum > 0)
            last.distance += (echo.distance - last.distance) * echo.intensity / sum;
        last.intensity = sum;
        if (echo.intensity > strongest) {
            strongest = echo.intensity;
            last.geometry = echo.geometry;
        }
    }
    if (merged.size() > maxReturns) {
        std::stable_sort(merged.begin(), merged.end(),
                         [](Echo const& a, Echo const& b) { return a.intensity > b.intensity; });
        merged.resize(maxReturns);
        std::sort(merged.begin(), merged.end(), [](Echo const& a, Echo const& b) { return a.distance < b.distance; });
    }
    echoes = std::move(merged);
}

} // namespace hyxSensor
