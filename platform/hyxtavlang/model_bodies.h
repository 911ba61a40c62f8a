// Bodies of a model, what they are made of, and the world they are in.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxtavlang/model_objects.h"

#include <array>

namespace tavlang {

namespace Physics3D {

/// How the surface of a shape meets others.
class Material : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.Material"; }

    Core::Properties getProperties() const override;

    double friction = 0.5;
    double restitution = 0;
    double density = 1000; ///< kg/m3
};

/// A rigid body. Its shapes and visuals are its children; joints name it. A body that no joint holds moves freely,
/// unless it is fixed.
class Body : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.Body"; }

    Core::Properties getProperties() const override;

    hyx::AffineMatrix4x4 transform; ///< at the start, in the model
    bool fixed = false;             ///< stands still in the world
    bool kinematic = false;         ///< goes where its velocities lead, whatever pushes it
    hyx::Vec3 velocity;             ///< at the start, m/s
    hyx::Vec3 angularVelocity;      ///< at the start, rad/s
    bool hasMass = false;           ///< whether the file gives mass; otherwise the shapes do
    double mass = 0;                ///< kg; 0 is the mass of the shapes where these weigh
    bool shapesWeigh = false;       ///< whether centre and inertia are those of the shapes
    hyx::Vec3 centerOfMass;         ///< in the body
    /// About the centre of mass along the body's axes, kg m2: xx, yy, zz, xy, xz, yz.
    std::array<double, 6> inertia{};
};

/// Two bodies whose shapes never collide.
class CollisionExclusion : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.CollisionExclusion"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Body> first;
    std::shared_ptr<Body> second;
};

/// A place of a body that the file gives a name.
class Site : public Core::Object {
public:
    std::string getType() const override { return "Physics3D.Site"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Body> body;     ///< null is the world
    hyx::AffineMatrix4x4 transform; ///< in the body
};

/// A model of bodies and joints, which are its children.
class System : public Physics::System {
public:
    std::string getType() const override { return "Physics3D.System"; }

    Core::Properties getProperties() const override;

    bool neighboursCollide = false; ///< whether bodies that a joint connects collide
};

} // namespace Physics3D

namespace Simulation {

/// What a file says of the world around its model.
class Settings : public Core::Object {
public:
    std::string getType() const override { return "Simulation.Settings"; }

    Core::Properties getProperties() const override;

    bool hasGravity = false;        ///< whether the file gives it; the simulation takes it over then
    hyx::Vec3 gravity{0, 0, -9.81}; ///< m/s2
    double timeStep = 0;            ///< seconds; 0 where the file gives none
};

/// A state that a file describes: what its joints and drives have then, in the order of the file. A joint with one
/// free direction has one number; a free body has seven positions (place, then turn as w, x, y, z) and six velocities,
/// a ball joint four and three.
class Keyframe : public Core::Object {
public:
    std::string getType() const override { return "Simulation.Keyframe"; }

    Core::Properties getProperties() const override;

    double time = 0;
    std::vector<double> positions;
    std::vector<double> velocities;
    std::vector<double> controls;
};

} // namespace Simulation

} // namespace tavlang
