// Bodies: mass, place, motion, and the forces on them.
#pragma once

#include "platform/hyx/objects/event.h"
#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vector.h"

#include <memory>

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyx {

class Frame;

/// A rigid body: a place, a motion, a mass, and the geometries that collide for it. Positions are those of the body's
/// model frame, which need not be its centre of mass.
class RigidBody : public Object {
public:
    /// How a body moves: by the forces on it, with the velocity it is given whatever is in its way, or not at all.
    enum MotionControl { DYNAMICS = 1, KINEMATICS = 2, STATIC = 3 };

    /// Called with a body that leaves its simulation or ends.
    using RemoveEvent = TypedEvent<RigidBody*>;

    explicit RigidBody(Name const& name = Name());
    /// A body with one geometry, whose mass follows from it. A null geometry adds nothing.
    explicit RigidBody(hyxCollide::Geometry* geometry, Name const& name = Name());

    /// Adds a geometry, which stays at its own local transform relative to the body. Throws std::invalid_argument when
    /// it belongs to another body. Null is ignored.
    void add(hyxCollide::Geometry* geometry);
    /// As above, at the given local transform.
    void add(hyxCollide::Geometry* geometry, AffineMatrix4x4 const& local);
    /// False when the geometry does not belong to this body.
    bool remove(hyxCollide::Geometry* geometry);
    Vector<ref_ptr<hyxCollide::Geometry>> const& getGeometries() const;

    /// Where the origin of the model frame is in the world, metres.
    void setPosition(Vec3 const& position);
    Vec3 getPosition() const;
    /// How the model frame is turned in the world.
    void setRotation(Quat const& rotation);
    Quat getRotation() const;
    /// Only the rotation and translation of `transform` are used.
    void setTransform(AffineMatrix4x4 const& transform);
    /// From the body's model frame to the world.
    AffineMatrix4x4 getTransform() const;
    /// A frame that follows the body; it lives as long as the body.
    Frame* getFrame() const;

    /// The velocity of the centre of mass in the world, m/s. Wakes the body.
    void setVelocity(Vec3 const& velocity);
    Vec3 getVelocity() const;
    /// rad/s in the world.
    void setAngularVelocity(Vec3 const& angularVelocity);
    Vec3 getAngularVelocity() const;
    /// The velocity of the body's material at a point of the world, m/s.
    Vec3 getPointVelocity(Vec3 const& worldPoint) const;

    /// DYNAMICS at the start.
    void setMotionControl(MotionControl control);
    MotionControl getMotionControl() const;
    /// A disabled body neither moves nor collides. Enabled at the start.
    void setEnable(bool enable);
    bool isEnabled() const;

    /// Kilograms. Fixes the mass: geometries added later no longer change it; the inertia is scaled along. Throws
    /// std::invalid_argument unless positive and finite.
    void setMass(Real mass);
    Real getMass() const;
    /// The moments about the centre of mass, in kg m2, along the axes of the model frame, and the products: the
    /// elements xy, xz and yz of the tensor. Fixes them. Throws std::invalid_argument unless the principal moments are
    /// positive and finite.
    void setInertia(Vec3 const& inertia, Vec3 const& products = Vec3());
    Vec3 getInertia() const;
    Vec3 getProductsOfInertia() const;
    /// Metres, in the model frame. Fixes it.
    void setCenterOfMass(Vec3 const& localPoint);
    Vec3 getCenterOfMass() const;
    Vec3 getWorldCenterOfMass() const;
    /// Computes mass, inertia and centre of mass from the geometries and the densities of their materials, and undoes
    /// what was fixed. A body without volume has 1 kg.
    void updateMassProperties();

    /// Forces in newtons and torques in newton metres, in world coordinates, act during the next step only and add up.
    void addForce(Vec3 const& force);
    /// The same at a point of the world, metres, where it turns the body too.
    void addForceAtPosition(Vec3 const& force, Vec3 const& worldPoint);
    /// Newton metres, in world coordinates, during the next step only.
    void addTorque(Vec3 const& torque);
    /// What was added since the last step, newtons or newton metres.
    Vec3 getForce() const;
    Vec3 getTorque() const;

    /// The share of velocity lost per second, 0 to 1; 0 at the start.
    void setLinearDamping(Real damping);
    Real getLinearDamping() const;
    /// The share of the turning speed lost per second, 0 to 1; 0 at the start.
    void setAngularDamping(Real damping);
    Real getAngularDamping() const;

    /// The kinetic energy of a body that moves by forces, in joules.
    Real getKineticEnergy() const;

    hyxSDK::Simulation* getSimulation() const;
    RemoveEvent& getRemoveEvent();

    struct Implementation;

    Implementation& implementation() const { return *m_implementation; }

protected:
    ~RigidBody() override;

private:
    std::unique_ptr<Implementation> m_implementation;
};

using RigidBodyPtrVector = Vector<ref_ptr<RigidBody>>;

} // namespace hyx
