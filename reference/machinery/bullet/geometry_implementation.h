// What stands behind a geometry.
#pragma once

#include "platform/hyx/bodies/material.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/shape.h"
#include "reference/machinery/bullet/collision_carrier.h"
#include "reference/machinery/bullet/shape_implementation.h"

#include <BulletCollision/CollisionDispatch/btCollisionObject.h>

#include <unordered_set>

namespace hyxCollide {

struct Geometry::Implementation {
    Implementation(Geometry& owner, Shape* shape);
    ~Implementation();

    /// The bullet shape, built when it is not there or was built for the other use.
    btCollisionShape* bulletShape(bool moving);
    /// Builds the bullet shape anew, wherever it is in use.
    void rebuild();
    /// Wakes what may rest on this geometry, and tells who wants to know.
    void shapeChanged();
    /// Takes the new place, shape or switch over into the simulation.
    void refresh();
    /// Whether these two may touch, as far as their switches go.
    static bool mayCollide(Geometry const* first, Geometry const* second);

    Geometry& owner;
    hyx::ref_ptr<Shape> shape;
    hyx::ref_ptr<hyx::Material> material;
    hyx::AffineMatrix4x4 local;
    hyx::RigidBody* body = nullptr;
    /// Set while this geometry stands in a simulation without a body.
    hyxSDK::Simulation* simulation = nullptr;
    bool enabled = true;
    bool sensor = false;
    /// Of a geometry of loose ground: the greatest friction, and the metres of shear in which it comes up. 0 for firm
    /// ones.
    hyx::Real groundFriction = 0;
    hyx::Real shearLength = 0;
    std::unordered_set<Geometry const*> strangers;

    BulletShape bullet;
    bool builtForMoving = false;
    /// Its place in its carrier's list.
    int index = 0;
    /// For standing without a body.
    CollisionCarrier carrier;
    btCollisionObject object;

    ShapeChangeEvent shapeChangeEvent;
    RemoveEvent removeEvent;
};

} // namespace hyxCollide
