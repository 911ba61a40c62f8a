// Works out the nearest surface point for every kind of shape.
#include "reference/hyx/particles/nearest_surface.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"

#include <algorithm>
#include <cmath>

namespace hyx {

namespace {

using Surface = ParticleObstacle::Surface;

Surface onBox(Vec3 const& half, Vec3 const& p) {
    Vec3 const nearest(std::clamp(p.x, -half.x, half.x), std::clamp(p.y, -half.y, half.y),
                       std::clamp(p.z, -half.z, half.z));
    Vec3 const out = p - nearest;
    if (Real const distance = out.length(); distance > 0)
        return {distance, out / distance, Vec3()};
    std::size_t axis = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if (half[i] - std::abs(p[i]) < half[axis] - std::abs(p[axis]))
            axis = i;
    Surface surface{std::abs(p[axis]) - half[axis], Vec3(), Vec3()};
    surface.normal[axis] = p[axis] < 0 ? -1 : 1;
    return surface;
}

Surface aroundPoint(Vec3 const& centre, Real radius, Vec3 const& p) {
    Vec3 const out = p - centre;
    Real const size = out.length();
    return {size - radius, size > 0 ? out / size : Vec3(0, 0, 1), Vec3()};
}

// A solid of revolution about Y is a convex outline in the half plane (radius, y); its edges are given from the bottom
// of the axis up.
struct Outline {
    Vec3 const points[4];
    int count;
};

Surface onRevolution(Outline const& outline, Vec3 const& p) {
    Real const radius = std::hypot(p.x, p.z);
    Vec3 const radial = radius > 0 ? Vec3(p.x / radius, 0, p.z / radius) : Vec3(1, 0, 0);
    Real outside = -1e300;
    Vec3 outward;
    Vec3 nearest;
    Real nearest2 = 1e300;
    for (int i = 0; i + 1 < outline.count; ++i) {
        Vec3 const a = outline.points[i], edge = outline.points[i + 1] - a;
        Vec3 const toPoint = Vec3(radius, p.y, 0) - a;
        Vec3 const normal = Vec3(edge.y, -edge.x, 0).normal();
        Real const height = normal.dot(toPoint);
        if (height > outside) {
            outside = height;
            outward = normal;
        }
        Vec3 const offset = toPoint - edge * std::clamp(toPoint.dot(edge) / edge.length2(), 0.0, 1.0);
        if (offset.length2() < nearest2) {
            nearest2 = offset.length2();
            nearest = offset;
        }
    }
    Real const distance = outside > 0 ? std::sqrt(nearest2) : outside;
    Vec3 const flat = outside > 0 && distance > 0 ? nearest / distance : outward;
    return {distance, radial * flat.x + Vec3(0, flat.y, 0), Vec3()};
}

Vec3 nearestOnTriangle(Vec3 const& a, Vec3 const& b, Vec3 const& c, Vec3 const& p) {
    Vec3 const corners[] = {a, b, c};
    Vec3 const normal = (b - a).cross(c - a);
    bool inside = normal.length2() > 0;
    Vec3 best = a;
    Real best2 = 1e300;
    for (int i = 0; i < 3; ++i) {
        Vec3 const& from = corners[i];
        Vec3 const edge = corners[(i + 1) % 3] - from;
        if (normal.cross(edge).dot(p - from) < 0)
            inside = false;
        Real const along = edge.length2() > 0 ? std::clamp((p - from).dot(edge) / edge.length2(), 0.0, 1.0) : 0;
        Vec3 const candidate = from + edge * along;
        if ((p - candidate).length2() < best2) {
            best2 = (p - candidate).length2();
            best = candidate;
        }
    }
    return inside ? p - normal * ((p - a).dot(normal) / normal.length2()) : best;
}

Surface onMesh(hyxCollide::Trimesh const& mesh, Vec3 const& p) {
    auto const& vertices = mesh.getVertices();
    auto const& indices = mesh.getIndices();
    Vec3 out(1e150);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        Vec3 const offset =
            p - nearestOnTriangle(vertices[indices[i]], vertices[indices[i + 1]], vertices[indices[i + 2]], p);
        if (offset.length2() < out.length2())
            out = offset;
    }
    Real const distance = out.length();
    return {distance, distance > 0 ? out / distance : Vec3(0, 0, 1), Vec3()};
}

// The tangent plane above or below the point, which is exact on flat ground and good on gentle slopes.
Surface onHeightField(hyxCollide::HeightField const& field, Vec3 const& p) {
    Real const h = 0.5 * std::min(field.getSizeX() / (field.getResolutionX() - 1),
                                  field.getSizeY() / (field.getResolutionY() - 1));
    Real const slopeX = (field.getHeightAt(p.x + h, p.y) - field.getHeightAt(p.x - h, p.y)) / (2 * h);
    Real const slopeY = (field.getHeightAt(p.x, p.y + h) - field.getHeightAt(p.x, p.y - h)) / (2 * h);
    Vec3 const normal = Vec3(-slopeX, -slopeY, 1).normal();
    return {(p.z - field.getHeightAt(p.x, p.y)) * normal.z, normal, Vec3()};
}

bool findInCompound(hyxCollide::Compound const& compound, Vec3 const& position, Real reach, Surface& surface,
                    Real rounding) {
    bool found = false;
    for (UInt i = 0; i < compound.getNumShapes(); ++i) {
        AffineMatrix4x4 const& local = compound.getLocalTransform(i);
        Surface part;
        if (!findNearestSurface(*compound.getShape(i), local.inverse().transformPoint(position), reach, part, rounding))
            continue;
        part.normal = local.transformVector(part.normal);
        if (!found || part.distance < surface.distance)
            surface = part;
        found = true;
    }
    return found;
}

} // namespace

bool findNearestSurface(hyxCollide::Shape const& shape, Vec3 const& position, Real reach, Surface& surface,
                        Real rounding) {
    using hyxCollide::Shape;
    Vec3 lower, upper;
    shape.getBound(lower, upper);
    // Height fields and planes are solid far below their bounds.
    bool const endless = shape.getType() == Shape::PLANE || shape.getType() == Shape::HEIGHT_FIELD;
    for (std::size_t i = 0; i < 3 && !endless; ++i)
        if (position[i] < lower[i] - reach || position[i] > upper[i] + reach)
            return false;
    switch (shape.getType()) {
    case Shape::BOX: {
        Vec3 const half = static_cast<hyxCollide::Box const&>(shape).getHalfExtents();
        Real const round = std::min({rounding, half.x, half.y, half.z});
        surface = onBox(half - Vec3(round), position);
        surface.distance -= round;
        break;
    }
    case Shape::SPHERE:
        surface = aroundPoint(Vec3(), static_cast<hyxCollide::Sphere const&>(shape).getRadius(), position);
        break;
    case Shape::CAPSULE: {
        auto const& capsule = static_cast<hyxCollide::Capsule const&>(shape);
        Real const half = 0.5 * capsule.getHeight();
        surface = aroundPoint(Vec3(0, std::clamp(position.y, -half, half), 0), capsule.getRadius(), position);
        break;
    }
    case Shape::CYLINDER: {
        auto const& cylinder = static_cast<hyxCollide::Cylinder const&>(shape);
        Real const r = cylinder.getRadius(), half = 0.5 * cylinder.getHeight();
        surface =
            onRevolution({{Vec3(0, -half, 0), Vec3(r, -half, 0), Vec3(r, half, 0), Vec3(0, half, 0)}, 4}, position);
        break;
    }
    case Shape::CONE: {
        auto const& cone = static_cast<hyxCollide::Cone const&>(shape);
        surface = onRevolution(
            {{Vec3(0, lower.y, 0), Vec3(cone.getRadius(), lower.y, 0), Vec3(0, upper.y, 0), Vec3()}, 3}, position);
        break;
    }
    case Shape::PLANE: {
        Plane const& plane = static_cast<hyxCollide::Plane const&>(shape).getPlane();
        surface = {plane.distance(position), plane.getNormal(), Vec3()};
        break;
    }
    case Shape::TRIMESH:
        surface = onMesh(static_cast<hyxCollide::Trimesh const&>(shape), position);
        break;
    case Shape::HEIGHT_FIELD:
        surface = onHeightField(static_cast<hyxCollide::HeightField const&>(shape), position);
        break;
    case Shape::COMPOUND:
        return findInCompound(static_cast<hyxCollide::Compound const&>(shape), position, reach, surface, rounding);
    }
    return surface.distance < reach;
}

} // namespace hyx
