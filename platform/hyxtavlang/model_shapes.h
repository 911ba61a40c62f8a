// Shapes of a model, for colliding and for being seen.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxtavlang/model_bodies.h"

#include <cstdint>

namespace tavlang::Physics3D {

/// A shape at a place of its body. Round shapes stand along Z.
class Geometry : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.Geometry"; }

    Core::Properties getProperties() const override;

    hyx::AffineMatrix4x4 transform; ///< in the body
    std::shared_ptr<Material> material;
    /// Two shapes collide when a bit of what one belongs to is among those that the other collides with.
    std::uint32_t belongsTo = 1;
    std::uint32_t collidesWith = 1;
    bool sensor = false; ///< reports contacts without forces
};

namespace Geometries {

class Box : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Box"; }

    Core::Properties getProperties() const override;

    hyx::Vec3 halfExtents;
};

class Sphere : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Sphere"; }

    Core::Properties getProperties() const override;

    double radius = 0;
};

class Ellipsoid : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Ellipsoid"; }

    Core::Properties getProperties() const override;

    hyx::Vec3 radii;
};

class Cylinder : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Cylinder"; }

    Core::Properties getProperties() const override;

    double radius = 0;
    double height = 0; ///< the whole length
};

class Capsule : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Capsule"; }

    Core::Properties getProperties() const override;

    double radius = 0;
    double height = 0; ///< without the half balls
};

class Cone : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Cone"; }

    Core::Properties getProperties() const override;

    double radius = 0; ///< of its base
    double height = 0; ///< from the base to the tip, which is up; the origin is halfway
};

/// The ground: all below the plane through the origin, across Z, is solid.
class Plane : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Plane"; }

    Core::Properties getProperties() const override;

    double halfSizes[2] = {0, 0}; ///< of what is seen of it; 0 is as far as one sees
};

/// Triangles of a file, or of the model's own.
class Mesh : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.Mesh"; }

    Core::Properties getProperties() const override;

    std::string file; ///< the whole path; empty where the triangles are in the model
    hyx::Vec3 scale{1, 1, 1};
    std::vector<hyx::Vec3> vertices; ///< before scaling
    std::vector<std::uint32_t> triangles;
};

/// Heights over a grid about the origin.
class HeightField : public Geometry {
public:
    std::string getType() const override { return "Physics3D.Geometries.HeightField"; }

    Core::Properties getProperties() const override;

    unsigned columns = 0;
    unsigned rows = 0;
    double halfSizes[2] = {0, 0};
    std::vector<double> heights; ///< metres, row by row from the lowest y, x first
};

} // namespace Geometries

/// Two shapes that collide whatever else is said of them, with a friction of their own.
class CollisionPair : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.CollisionPair"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Geometry> first;
    std::shared_ptr<Geometry> second;
    double friction = 1;
};

} // namespace tavlang::Physics3D
