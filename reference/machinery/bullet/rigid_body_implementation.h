// What stands behind a body.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "reference/machinery/bullet/collision_carrier.h"

#include <BulletCollision/CollisionShapes/btCompoundShape.h>
#include <BulletCollision/CollisionShapes/btEmptyShape.h>
#include <BulletDynamics/Dynamics/btRigidBody.h>

#include <memory>

namespace hyx {

/// Follows its body; when the body has ended it stays where the body was last.
class BodyFrame : public Frame {
public:
    explicit BodyFrame(RigidBody* body) : m_body(body) {}

    bool findPlace(AffineMatrix4x4& place) const override;
    void bodyEnds();

    /// Null when it has ended.
    RigidBody* body() const { return m_body; }

private:
    RigidBody* m_body;
};

/// Bullet keeps a body at its centre of mass, along its principal axes: `massFrame` leads from there to the model
/// frame.
struct RigidBody::Implementation {
    explicit Implementation(RigidBody& owner);
    ~Implementation();

    btTransform modelTransform() const { return bullet.getWorldTransform() * massFrameInverse; }

    void setModelTransform(btTransform const& transform);
    void setMassFrame(btTransform const& frame);
    /// Fixes the inertia about the centre of mass, along the axes of the model frame. Throws std::invalid_argument for
    /// a tensor that no body has.
    void setInertiaTensor(btMatrix3x3 tensor);
    btMatrix3x3 inertiaTensor() const;

    /// Computes what of mass, inertia and centre is not fixed.
    void updateMass();
    /// Builds the collision shape of all geometries and, while in a world, enters it anew.
    void rebuildShape();
    void geometriesChanged();
    /// Gives mass and flags for the motion control to bullet.
    void applyControl();

    bool movesByForces() const { return control == DYNAMICS; }

    btVector3 velocity() const;
    btVector3 spin() const;

    RigidBody& owner;
    hyxCollide::CollisionCarrier carrier;
    btEmptyShape emptyShape;
    std::unique_ptr<btCompoundShape> compound;
    btRigidBody bullet;
    Vector<ref_ptr<hyxCollide::Geometry>> geometries;

    btTransform massFrame = btTransform::getIdentity();
    btTransform massFrameInverse = btTransform::getIdentity();
    Real mass = 1;
    /// Principal moments.
    btVector3 inertia{0.4, 0.4, 0.4};
    bool massFixed = false;
    bool inertiaFixed = false;
    bool centerFixed = false;

    MotionControl control = DYNAMICS;
    bool enabled = true;
    /// What a kinematic body was told; bullet's own velocity follows from its motion.
    btVector3 kinematicVelocity{0, 0, 0};
    btVector3 kinematicSpin{0, 0, 0};

    hyxSDK::Simulation* simulation = nullptr;
    ref_ptr<BodyFrame> frame;
    RemoveEvent removeEvent;
};

} // namespace hyx
