// Builds Bullet's shape for each kind of shape.
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/shape_implementation.h"

#include <BulletCollision/CollisionShapes/btBoxShape.h>
#include <BulletCollision/CollisionShapes/btCapsuleShape.h>
#include <BulletCollision/CollisionShapes/btCompoundShape.h>
#include <BulletCollision/CollisionShapes/btConeShape.h>
#include <BulletCollision/CollisionShapes/btConvexHullShape.h>
#include <BulletCollision/CollisionShapes/btConvexPolyhedron.h>
#include <BulletCollision/CollisionShapes/btCylinderShape.h>
#include <BulletCollision/CollisionShapes/btHeightfieldTerrainShape.h>
#include <BulletCollision/CollisionShapes/btSphereShape.h>
#include <BulletCollision/CollisionShapes/btStaticPlaneShape.h>
#include <BulletCollision/Gimpact/btGImpactShape.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace hyxCollide {

namespace {

/// Bullet surrounds surfaces with a skin; its usual 4 cm would let bodies hover.
constexpr double surfaceSkin = 0.001;

/// Whether no vertex lies outside of a triangle's plane. Meshes too large to try count as not convex.
bool isConvex(Trimesh const& mesh) {
    auto const& vertices = mesh.getVertices();
    if (!mesh.isClosed() || mesh.getNumTriangles() * vertices.size() > 20'000'000)
        return false;
    hyx::Vec3 lower;
    hyx::Vec3 upper;
    mesh.getBound(lower, upper);
    double const tolerance = 1e-6 * (upper - lower).length();
    for (hyx::UInt i = 0; i < mesh.getNumTriangles(); ++i) {
        hyx::Vec3 const normal = mesh.getTriangleNormal(i);
        hyx::Vec3 const& corner = vertices[mesh.getIndices()[3 * i]];
        for (hyx::Vec3 const& vertex : vertices)
            if (normal.dot(vertex - corner) > tolerance)
                return false;
    }
    return true;
}

std::unique_ptr<btCollisionShape> buildMesh(Trimesh const& mesh, bool moving) {
    Shape::Implementation& shared = mesh.implementation();
    if (!shared.triangles) {
        auto const* indices = reinterpret_cast<int const*>(mesh.getIndices().data());
        shared.triangles = std::make_unique<btTriangleIndexVertexArray>(
            static_cast<int>(mesh.getNumTriangles()), const_cast<int*>(indices), static_cast<int>(3 * sizeof(int)),
            static_cast<int>(mesh.getVertices().size()), const_cast<double*>(mesh.getVertices().data()->ptr()),
            static_cast<int>(sizeof(hyx::Vec3)));
    }
    if (moving && isConvex(mesh)) {
        auto shape = std::make_unique<btConvexHullShape>();
        for (hyx::Vec3 const& vertex : mesh.getVertices())
            shape->addPoint(hyx::toBullet(vertex), false);
        shape->setMargin(surfaceSkin);
        shape->optimizeConvexHull();
        shape->recalcLocalAabb();
        shape->initializePolyhedralFeatures();
        return shape;
    }
    if (moving) {
        auto shape = std::make_unique<btGImpactMeshShape>(shared.triangles.get());
        shape->setMargin(surfaceSkin);
        shape->updateBound();
        return shape;
    }
    if (!shared.tree)
        shared.tree = std::make_unique<btBvhTriangleMeshShape>(shared.triangles.get(), true);
    auto shape = std::make_unique<btBvhTriangleMeshShape>(shared.triangles.get(), true, false);
    shape->setOptimizedBvh(shared.tree->getOptimizedBvh());
    shape->setMargin(surfaceSkin);
    return shape;
}

std::unique_ptr<btCollisionShape> buildHeightField(HeightField const& field) {
    double highest = 0;
    for (double height : field.getHeights())
        highest = std::max(highest, std::abs(height));
    // Bullet puts the field's origin at the middle of its bounds: with the same reach up and down it stays at zero.
    double const reach = 2 * highest + 1;
    field.implementation().heightReach = reach;
    auto const resolutionX = static_cast<int>(field.getResolutionX());
    auto const resolutionY = static_cast<int>(field.getResolutionY());
    auto shape = std::make_unique<btHeightfieldTerrainShape>(resolutionX, resolutionY, field.getHeights().data(),
                                                             -reach, reach, 2, false);
    shape->setLocalScaling(btVector3(field.getSizeX() / (resolutionX - 1), field.getSizeY() / (resolutionY - 1), 1));
    shape->setMargin(surfaceSkin);
    return shape;
}

BulletShape buildCompound(Compound const& compound, bool moving) {
    BulletShape result;
    auto whole = std::make_unique<btCompoundShape>(false, static_cast<int>(compound.getNumShapes()));
    for (hyx::UInt i = 0; i < compound.getNumShapes(); ++i) {
        BulletShape part = buildBulletShape(*compound.getShape(i), moving);
        whole->addChildShape(hyx::toBullet(compound.getLocalTransform(i)), part.shape.get());
        result.parts.push_back(std::move(part.shape));
    }
    result.shape = std::move(whole);
    return result;
}

std::unique_ptr<btCollisionShape> buildBox(Box const& box) {
    // Its faces are cut against those of hulls and triangles, which finds all corners of a contact at once. To find
    // them takes longer than all else of a body: equal boxes, which come in rows, take those of the one before.
    thread_local std::optional<std::pair<hyx::Vec3, btConvexPolyhedron>> last;
    hyx::Vec3 const half = box.getHalfExtents();
    auto shape = std::make_unique<btBoxShape>(hyx::toBullet(half));
    if (last && last->first == half) {
        shape->setPolyhedralFeatures(last->second);
    } else {
        shape->initializePolyhedralFeatures();
        last.emplace(half, *shape->getConvexPolyhedron());
    }
    return shape;
}

std::unique_ptr<btCollisionShape> buildPlain(Shape const& shape, bool moving) {
    switch (shape.getType()) {
    case Shape::BOX:
        return buildBox(static_cast<Box const&>(shape));
    case Shape::SPHERE:
        return std::make_unique<btSphereShape>(static_cast<Sphere const&>(shape).getRadius());
    case Shape::CYLINDER: {
        auto const& cylinder = static_cast<Cylinder const&>(shape);
        return std::make_unique<btCylinderShape>(
            btVector3(cylinder.getRadius(), cylinder.getHeight() / 2, cylinder.getRadius()));
    }
    case Shape::CAPSULE: {
        auto const& capsule = static_cast<Capsule const&>(shape);
        return std::make_unique<btCapsuleShape>(capsule.getRadius(), capsule.getHeight());
    }
    case Shape::CONE: {
        auto const& cone = static_cast<Cone const&>(shape);
        auto result = std::make_unique<btConeShape>(cone.getRadius(), cone.getHeight());
        result->setMargin(surfaceSkin);
        return result;
    }
    case Shape::PLANE: {
        hyx::Plane const& plane = static_cast<Plane const&>(shape).getPlane();
        return std::make_unique<btStaticPlaneShape>(hyx::toBullet(plane.getNormal()), -plane.getD());
    }
    case Shape::TRIMESH:
        return buildMesh(static_cast<Trimesh const&>(shape), moving);
    case Shape::HEIGHT_FIELD:
        return buildHeightField(static_cast<HeightField const&>(shape));
    default:
        return nullptr;
    }
}

} // namespace

BulletShape buildBulletShape(Shape const& shape, bool moving) {
    if (shape.getType() == Shape::COMPOUND)
        return buildCompound(static_cast<Compound const&>(shape), moving);
    BulletShape result;
    result.shape = buildPlain(shape, moving);
    return result;
}

void markBulletShape(BulletShape const& shape, Geometry* geometry) {
    shape.shape->setUserPointer(geometry);
    for (auto const& part : shape.parts)
        part->setUserPointer(geometry);
}

} // namespace hyxCollide
