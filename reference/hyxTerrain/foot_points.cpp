// Goes over the corners and rims of shapes.
#include "reference/hyxTerrain/foot_points.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/trimesh.h"

#include <cmath>
#include <numbers>

namespace hyxTerrain {

using hyx::Real;
using hyx::Vec3;

namespace {

/// Metres that a corner may hang above the ground that bears it.
constexpr Real hanging = 0.01;
constexpr int rimPoints = 32;
/// Cosine of the lean up to which a cylinder stands on its end.
constexpr Real standing = 0.95;

// Around the circles rather than on them, so that no ground under a shape is left out.
std::vector<Vec3> rims(Real radius, Real height) {
    radius /= std::cos(std::numbers::pi / rimPoints);
    std::vector<Vec3> points;
    for (int i = 0; i < rimPoints; ++i) {
        Real const angle = 2 * std::numbers::pi * i / rimPoints;
        for (Real const end : {-0.5, 0.5})
            points.emplace_back(radius * std::cos(angle), end * height, radius * std::sin(angle));
    }
    return points;
}

std::vector<Vec3> corners(hyxCollide::Shape const& shape, bool stands) {
    if (auto const* box = dynamic_cast<hyxCollide::Box const*>(&shape)) {
        Vec3 const half = box->getHalfExtents();
        std::vector<Vec3> points;
        for (int i = 0; i < 8; ++i)
            points.emplace_back(i & 1 ? half.x : -half.x, i & 2 ? half.y : -half.y, i & 4 ? half.z : -half.z);
        return points;
    }
    if (auto const* mesh = dynamic_cast<hyxCollide::Trimesh const*>(&shape))
        return {mesh->getVertices().begin(), mesh->getVertices().end()};
    if (auto const* cylinder = dynamic_cast<hyxCollide::Cylinder const*>(&shape); cylinder && stands)
        return rims(cylinder->getRadius(), cylinder->getHeight());
    if (auto const* cone = dynamic_cast<hyxCollide::Cone const*>(&shape); cone && stands)
        return rims(cone->getRadius(), cone->getHeight());
    return {};
}

} // namespace

std::vector<Vec3> findFootPoints(hyxCollide::Geometry const& geometry, Terrain const& terrain) {
    hyx::AffineMatrix4x4 const transform = geometry.getTransform();
    bool const stands = std::abs(transform.transformVector(Vec3(0, 1, 0)).z) > standing;
    std::vector<Vec3> found;
    for (Vec3 const& corner : corners(*geometry.getShape(), stands)) {
        Vec3 const place = transform.transformPoint(corner);
        if (place.z < terrain.getWorldHeight(place.x, place.y) + hanging)
            found.push_back(place);
    }
    return found;
}

} // namespace hyxTerrain
