// The parts of bodies that collide.
#pragma once

#include "platform/hyx/objects/event.h"
#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vector.h"

#include <memory>

namespace hyx {
class Material;
class RigidBody;
} // namespace hyx

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxCollide {

class Shape;

/// A shape at a place: what collides, for a body or standing alone in a simulation.
class Geometry : public hyx::Object {
public:
    /// Called with the geometry whose shape changed.
    class ShapeChangeEvent : public hyx::TypedEvent<Geometry const*> {};

    /// Called with a geometry that leaves its body, leaves the simulation, or ends.
    class RemoveEvent : public hyx::TypedEvent<Geometry const*> {};

    /// Throws std::invalid_argument for a null shape.
    explicit Geometry(Shape* shape, hyx::Name const& name = hyx::Name());

    Shape* getShape() const;
    /// Throws std::invalid_argument for a null shape.
    void setShape(Shape* shape);

    /// Relative to the body, or to the world for a geometry without one. Only rotation and translation are used.
    void setLocalTransform(hyx::AffineMatrix4x4 const& local);
    hyx::AffineMatrix4x4 const& getLocalTransform() const;
    /// Metres, see setLocalTransform.
    void setLocalPosition(hyx::Vec3 const& position);

    hyx::Vec3 getLocalPosition() const { return getLocalTransform().getTranslate(); }

    /// See setLocalTransform.
    void setLocalRotation(hyx::Quat const& rotation);

    hyx::Quat getLocalRotation() const { return getLocalTransform().getRotate(); }

    /// From this geometry to the world.
    hyx::AffineMatrix4x4 getTransform() const;

    /// In the world, metres.
    hyx::Vec3 getPosition() const { return getTransform().getTranslate(); }

    /// In the world.
    hyx::Quat getRotation() const { return getTransform().getRotate(); }

    /// The body that this geometry belongs to, or null.
    hyx::RigidBody* getRigidBody() const;
    /// The simulation that the geometry is in; null for none.
    hyxSDK::Simulation* getSimulation() const;

    /// Null gives the default material.
    void setMaterial(hyx::Material* material);
    hyx::Material* getMaterial() const;

    /// A disabled geometry collides with nothing and is not hit by rays. Enabled at the start.
    void setEnableCollisions(bool enable);
    bool getEnableCollisions() const;
    /// Switches collisions between this geometry and another one, on at the start.
    void setEnableCollisions(Geometry* other, bool enable);
    bool getEnableCollisions(Geometry const* other) const;
    /// A sensor reports contacts but makes no forces.
    void setSensor(bool sensor);
    bool isSensor() const;

    /// The corners of the box around this geometry in the world.
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const;

    ShapeChangeEvent& getShapeChangeEvent() const;
    RemoveEvent& getRemoveEvent() const;

    struct Implementation;

    Implementation& implementation() const { return *m_implementation; }

protected:
    ~Geometry() override;

private:
    std::unique_ptr<Implementation> m_implementation;
};

using GeometryPtrVector = hyx::Vector<hyx::ref_ptr<Geometry>>;

} // namespace hyxCollide
