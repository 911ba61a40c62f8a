// What stands behind a shape, and Bullet's shapes made for it.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <BulletCollision/CollisionShapes/btBvhTriangleMeshShape.h>
#include <BulletCollision/CollisionShapes/btCollisionShape.h>
#include <BulletCollision/CollisionShapes/btTriangleIndexVertexArray.h>

#include <memory>
#include <vector>

namespace hyxCollide {

class Geometry;

/// Who uses a shape, and what all users share of it.
struct Shape::Implementation {
    std::vector<Geometry*> users;
    /// The compounds that this shape is a part of, once for each part.
    std::vector<Shape*> containers;
    /// The triangles of a mesh and the tree over them, made when first needed.
    std::unique_ptr<btTriangleIndexVertexArray> triangles;
    std::unique_ptr<btBvhTriangleMeshShape> tree;
    /// The height that the bullet shapes of a height field reach up and down to; nothing has to be built anew below it.
    double heightReach = 0;
};

/// A bullet shape, and the shapes that it only points to.
struct BulletShape {
    std::vector<std::unique_ptr<btCollisionShape>> parts;
    std::unique_ptr<btCollisionShape> shape;
};

/// Builds what collides for a shape. Meshes that move need another kind than those that stand.
BulletShape buildBulletShape(Shape const& shape, bool moving);

/// Puts a geometry's address into a bullet shape and all parts of it, for `geometryOf` to find.
void markBulletShape(BulletShape const& shape, Geometry* geometry);

/// The geometry for which a bullet shape was built; null where there is none.
inline Geometry* geometryOf(btCollisionShape const* shape) {
    return static_cast<Geometry*>(shape->getUserPointer());
}

} // namespace hyxCollide
