// Bullet's world, in the words of this library.
#pragma once

#include "platform/hyx/bodies/contact_material.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyxCollide/space.h"
#include "reference/machinery/bullet/step_solver.h"

#include <BulletDynamics/ConstraintSolver/btSequentialImpulseConstraintSolver.h>
#include <BulletDynamics/Dynamics/btDiscreteDynamicsWorld.h>

#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class btDbvtBroadphase;
class btDefaultCollisionConfiguration;

namespace hyx {

class ContactDispatcher;
class StateBytes;

/// Real time spent in the parts of a step, in seconds.
struct StepTimes {
    double collision = 0;
    double solver = 0;
};

/// The bullet world of a simulation: what is in it collides and moves.
class PhysicsWorld {
public:
    /// How far the rounds of contacts go; joints are always solved exactly.
    using Effort = StepSolver::Effort;

    PhysicsWorld();
    ~PhysicsWorld();

    /// A disabled body stays out. Throws std::invalid_argument for a shape that cannot move on a body that does.
    void add(RigidBody::Implementation& body);
    void remove(RigidBody::Implementation& body);
    void add(hyxCollide::Geometry& geometry);
    void remove(hyxCollide::Geometry& geometry);
    /// Before all go out: each that did so with pairs would look through the pairs of all.
    void dropPairs();
    void add(Constraint::Implementation& constraint);
    void remove(Constraint::Implementation& constraint);

    /// Takes over the new place, shape or switches of a geometry without a body.
    void refresh(hyxCollide::Geometry& geometry);
    void bodyMoved(RigidBody::Implementation& body);
    void wakeAround(hyxCollide::Geometry const& geometry);
    /// Contacts and the order of objects, once the bodies themselves have been restored.
    void exchangeState(StateBytes& bytes, std::vector<RigidBody*> const& bodies,
                       std::vector<hyxCollide::Geometry*> const& geometries);

    void setEffort(Effort effort);
    void setNumIterations(int iterations);
    void setGravity(Vec3 const& gravity);
    void setAutoSleep(bool enable, std::vector<RigidBody*> const& bodies);

    /// Keyed by the pair, the lower address first.
    std::map<std::pair<Material const*, Material const*>, ref_ptr<ContactMaterial>> contactMaterials;
    ContactMaterial* contactMaterial(Material const* first, Material const* second) const;

    /// One exact step. Throws std::runtime_error, and moves nothing, when a state would not be finite.
    StepTimes step(Real timeStep);

    /// Whether a step looks at nothing that another world moves: joints may be attached to its bodies.
    bool standsAlone() const;

    /// How bodies would answer to pushes in the next step of `timeStep` seconds, contacts apart.
    BodyResponse respond(std::vector<RigidBody*> const& bodies, Real timeStep);

    hyxCollide::LocalGeometryContactVector contacts(hyxCollide::Geometry const* first,
                                                    hyxCollide::Geometry const* second) const;
    UInt numContactPoints() const;
    /// In place of those of the last step, until the next one; nothing ends that.
    void showContacts(std::optional<hyxCollide::LocalGeometryContactVector> contacts);
    Vector<hyxCollide::RayHit> castRay(Vec3 const& from, Vec3 const& to, RigidBody const* ignored, bool all) const;
    hyxCollide::GeometryPtrVector findGeometries(Vec3 const& lower, Vec3 const& upper) const;

private:
    class World;

    void bringBoxesUpToDate() const;
    void findContacts();
    void enterAnew(std::vector<int> const& order, std::vector<RigidBody*> const& bodies,
                   std::vector<hyxCollide::Geometry*> const& geometries);
    /// An order of contacts that knows nothing of when they were found.
    static bool isBefore(btPersistentManifold const* first, btPersistentManifold const* second);

    std::unique_ptr<btDefaultCollisionConfiguration> m_configuration;
    std::unique_ptr<ContactDispatcher> m_dispatcher;
    std::unique_ptr<btDbvtBroadphase> m_broadphase;
    /// Bullet's world asks for a solver, which is not used.
    btSequentialImpulseConstraintSolver m_solver;
    std::unique_ptr<World> m_world;
    std::vector<Constraint::Implementation*> m_constraints;
    std::optional<hyxCollide::LocalGeometryContactVector> m_shownContacts;
    bool m_autoSleep = false;
    Real m_timeStep = 1;
    /// Whether bodies have moved since bullet's boxes around them were found.
    mutable bool m_boxesOutdated = false;
};

} // namespace hyx
