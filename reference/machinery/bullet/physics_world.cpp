// Adds to Bullet's world what moves and collides, and steps it.
#include "reference/machinery/bullet/physics_world.h"

#include "platform/hyxCollide/shape.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/bullet/rolling_resistance.h"
#include "reference/machinery/bullet/soft_row_solver.h"

#include <BulletCollision/BroadphaseCollision/btDbvtBroadphase.h>
#include <BulletCollision/CollisionDispatch/btDefaultCollisionConfiguration.h>
#include <BulletCollision/Gimpact/btGImpactCollisionAlgorithm.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stdexcept>

namespace hyx {

using hyxCollide::Geometry;
using hyxCollide::Shape;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void requireMovable(RigidBody::Implementation const& body) {
    if (!body.movesByForces())
        return;
    for (auto const& geometry : body.geometries) {
        Shape::Type const type = geometry->getShape()->getType();
        if (type == Shape::PLANE || type == Shape::HEIGHT_FIELD)
            throw std::invalid_argument(
                "a body with a plane or a height field cannot move by forces; set its motion control to STATIC first");
    }
}

} // namespace

/// Measures the two parts of a step that take the time.
class PhysicsWorld::World : public btDiscreteDynamicsWorld {
public:
    using btDiscreteDynamicsWorld::btDiscreteDynamicsWorld;

    void performDiscreteCollisionDetection() override {
        auto const start = Clock::now();
        btDiscreteDynamicsWorld::performDiscreteCollisionDetection();
        times.collision = secondsSince(start);
    }

    void solveConstraints(btContactSolverInfo& info) override {
        auto const start = Clock::now();
        btDiscreteDynamicsWorld::solveConstraints(info);
        times.solver = secondsSince(start);
    }

    StepTimes times;
};

PhysicsWorld::PhysicsWorld()
    : m_configuration(std::make_unique<btDefaultCollisionConfiguration>()),
      m_dispatcher(std::make_unique<ContactDispatcher>(m_configuration.get())),
      m_broadphase(std::make_unique<btDbvtBroadphase>()),
      m_solver(makeSolver()),
      m_world(std::make_unique<World>(m_dispatcher.get(), m_broadphase.get(), m_solver.get(), m_configuration.get())) {
    btGImpactCollisionAlgorithm::registerAlgorithm(m_dispatcher.get());
    // The second direction lets friction hold and brake at right angles to the motion too.
    m_world->getSolverInfo().m_solverMode |= SOLVER_USE_2_FRICTION_DIRECTIONS;
    m_world->getDispatchInfo().m_deterministicOverlappingPairs = true;
}

PhysicsWorld::~PhysicsWorld() = default;

void PhysicsWorld::add(RigidBody::Implementation& body) {
    requireMovable(body);
    if (!body.enabled)
        return;
    bool const awake = !m_autoSleep || body.control == RigidBody::KINEMATICS;
    body.bullet.forceActivationState(awake ? DISABLE_DEACTIVATION : ACTIVE_TAG);
    m_world->addRigidBody(&body.bullet);
    if (body.control == RigidBody::KINEMATICS)
        m_kinematicBodies.push_back(&body);
}

void PhysicsWorld::remove(RigidBody::Implementation& body) {
    std::erase(m_kinematicBodies, &body);
    if (!body.bullet.getBroadphaseHandle())
        return;
    if (m_autoSleep)
        for (auto const& geometry : body.geometries)
            wakeAround(*geometry);
    m_world->removeRigidBody(&body.bullet);
}

void PhysicsWorld::add(Geometry& geometry) {
    Geometry::Implementation& self = geometry.implementation();
    self.carrier.world = this;
    self.index = 0;
    self.object.setCollisionShape(self.bulletShape(false));
    self.object.setWorldTransform(toBullet(self.local));
    m_world->addCollisionObject(&self.object, btBroadphaseProxy::StaticFilter,
                                btBroadphaseProxy::AllFilter ^ btBroadphaseProxy::StaticFilter);
}

void PhysicsWorld::remove(Geometry& geometry) {
    Geometry::Implementation& self = geometry.implementation();
    if (self.carrier.world != this)
        return;
    wakeAround(geometry);
    m_world->removeCollisionObject(&self.object);
    self.carrier.world = nullptr;
}

void PhysicsWorld::refresh(Geometry& geometry) {
    remove(geometry);
    add(geometry);
}

void PhysicsWorld::add(Constraint::Implementation& constraint) {
    constraint.world = this;
    m_constraints.push_back(&constraint);
}

void PhysicsWorld::remove(Constraint::Implementation& constraint) {
    std::erase(m_constraints, &constraint);
    if (constraint.inWorld)
        for (ConstraintRow* row : constraint.allRows)
            m_world->removeConstraint(row);
    constraint.inWorld = false;
    constraint.rest();
    constraint.world = nullptr;
}

void PhysicsWorld::bodyMoved(RigidBody::Implementation& body) {
    if (!body.bullet.getBroadphaseHandle())
        return;
    m_world->updateSingleAabb(&body.bullet);
    body.bullet.activate();
}

void PhysicsWorld::wakeAround(Geometry const& geometry) {
    if (!m_autoSleep)
        return;

    struct Waker : btBroadphaseAabbCallback {
        bool process(btBroadphaseProxy const* proxy) override {
            static_cast<btCollisionObject*>(proxy->m_clientObject)->activate();
            return true;
        }
    } waker;

    Vec3 lower;
    Vec3 upper;
    geometry.getBound(lower, upper);
    m_broadphase->aabbTest(toBullet(lower), toBullet(upper), waker);
}

void PhysicsWorld::forgetHistory(std::vector<RigidBody*> const& bodies) {
    for (RigidBody* body : bodies)
        remove(body->implementation());
    m_broadphase->resetPool(m_dispatcher.get());
    m_solver->reset();
    for (RigidBody* body : bodies)
        add(body->implementation());
}

std::unique_ptr<btConstraintSolver> PhysicsWorld::makeSolver() const {
    if (m_solverType == DIRECT)
        return std::make_unique<DirectSolver>();
    if (m_solverType == CONJUGATE)
        return std::make_unique<ConjugateSolver>();
    return std::make_unique<SequentialSolver>();
}

void PhysicsWorld::setSolver(Solver solver) {
    m_solverType = solver;
    auto former = std::exchange(m_solver, makeSolver());
    m_world->setConstraintSolver(m_solver.get());
    // A direct solution is of all bodies that touch each other; bullet's batches of islands would mix them.
    m_world->getSolverInfo().m_minimumSolverBatchSize = solver == DIRECT ? 1 : 128;
}

void PhysicsWorld::setNumIterations(int iterations) {
    m_world->getSolverInfo().m_numIterations = iterations;
}

void PhysicsWorld::setGravity(Vec3 const& gravity) {
    m_world->setGravity(toBullet(gravity));
    // Who sleeps would keep the gravity it fell asleep with.
    auto& bodies = m_world->getNonStaticRigidBodies();
    for (int i = 0; i < bodies.size(); ++i) {
        bodies[i]->setGravity(toBullet(gravity));
        bodies[i]->activate();
    }
}

void PhysicsWorld::setAutoSleep(bool enable, std::vector<RigidBody*> const& bodies) {
    m_autoSleep = enable;
    for (RigidBody* body : bodies)
        if (body->getMotionControl() == RigidBody::DYNAMICS)
            body->implementation().bullet.forceActivationState(enable ? ACTIVE_TAG : DISABLE_DEACTIVATION);
}

ContactMaterial* PhysicsWorld::contactMaterial(Material const* first, Material const* second) const {
    if (contactMaterials.empty())
        return nullptr;
    auto const entry = contactMaterials.find(std::minmax(first, second));
    return entry == contactMaterials.end() ? nullptr : entry->second.get();
}

StepTimes PhysicsWorld::step(Real timeStep) {
    m_timeStep = timeStep;
    for (RigidBody::Implementation* body : m_kinematicBodies)
        body->moveKinematic(timeStep);
    for (Constraint::Implementation* constraint : m_constraints) {
        bool const works = constraint->canWork();
        if (works != constraint->inWorld)
            for (ConstraintRow* row : constraint->allRows)
                works ? m_world->addConstraint(row) : m_world->removeConstraint(row);
        constraint->inWorld = works;
        constraint->prepare(timeStep);
    }
    // Bullet takes deep penetration back without a force, which would let bodies sink through soft contacts.
    bool const soft = std::any_of(contactMaterials.begin(), contactMaterials.end(),
                                  [](auto const& entry) { return std::isfinite(entry.second->getStiffness()); });
    m_world->getSolverInfo().m_splitImpulse = !soft;
    applyRollingResistance(*m_dispatcher, timeStep);
    m_world->times = {};
    m_world->stepSimulation(timeStep, 0);
    for (Constraint::Implementation* constraint : m_constraints)
        constraint->collect(timeStep);
    return m_world->times;
}

} // namespace hyx
