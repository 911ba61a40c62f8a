// The way back from Bullet's collision objects to ours.
#pragma once

#include <LinearMath/btVector3.h>

#include <vector>

namespace hyx {
class PhysicsWorld;
class RigidBody;
} // namespace hyx

namespace hyxCollide {

class Geometry;

/// What a bullet collision object stands for: a body with its geometries, or one geometry alone. The object's user
/// pointer leads here.
struct CollisionCarrier {
    hyx::RigidBody* body = nullptr;
    std::vector<Geometry*> geometries;
    hyx::PhysicsWorld* world = nullptr;
    /// Of a ball about the object's centre that holds its shape; known while in a world.
    double radius = 0;
    /// Half of what is least thick of the shape; 0 of a surface.
    double core = 0;
    /// How far from each of the object's axes is what turns about it and stands out.
    btVector3 arms{0, 0, 0};
};

} // namespace hyxCollide
