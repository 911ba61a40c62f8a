// Adds to Bullet's world what moves and collides, and steps it.
#include "reference/machinery/bullet/physics_world.h"

#include "platform/hyx/bodies/observer_frame.h"
#include "platform/hyxCollide/shape.h"
#include "reference/machinery/bullet/ball_contacts.h"
#include "reference/machinery/bullet/box_contacts.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/flat_end_contacts.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/part_contacts.h"
#include "reference/machinery/bullet/plane_contacts.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/bullet/shape_size.h"
#include "reference/machinery/bullet/surface_contacts.h"

#include <BulletCollision/BroadphaseCollision/btDbvtBroadphase.h>
#include <BulletCollision/CollisionDispatch/btDefaultCollisionConfiguration.h>
#include <BulletCollision/CollisionDispatch/btSimulationIslandManager.h>
#include <BulletCollision/Gimpact/btGImpactCollisionAlgorithm.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string>

namespace hyx {

using hyxCollide::Geometry;
using hyxCollide::Shape;

namespace {

using Clock = std::chrono::steady_clock;

/// More pairs than these, together and by body, are a crowd; heaps have a tenth of that, thin rods less than either.
struct Crowd {
    int pairs;
    int ofEach;
};

constexpr Crowd crowds[] = {{100000, 200}, {1000000, 100}};

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Lets pairs go that have parted, which the search does over several steps.
struct Parting : btOverlapCallback {
    bool processOverlap(btBroadphasePair& pair) override {
        auto const* const first = static_cast<btDbvtProxy const*>(pair.m_pProxy0);
        auto const* const second = static_cast<btDbvtProxy const*>(pair.m_pProxy1);
        return !Intersect(first->leaf->volume, second->leaf->volume);
    }
};

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

/// The world of the body that a frame follows; null when it follows none.
PhysicsWorld const* worldOf(Frame const* frame) {
    RigidBody const* body = nullptr;
    for (; frame && !body; frame = frame->getParent())
        if (auto const* const own = dynamic_cast<BodyFrame const*>(frame))
            body = own->body();
        else if (auto const* const observer = dynamic_cast<ObserverFrame const*>(frame))
            body = observer->getRigidBody();
    return body ? body->implementation().carrier.world : nullptr;
}

} // namespace

/// Finds contacts and who sleeps by bullet's means, and moves the bodies by our own.
class PhysicsWorld::World : public btDiscreteDynamicsWorld, private btSimulationIslandManager::IslandCallback {
public:
    using btDiscreteDynamicsWorld::btDiscreteDynamicsWorld;

    StepTimes advance(double timeStep, std::vector<Constraint::Implementation*> const& constraints, bool autoSleep) {
        StepTimes times;
        auto const start = Clock::now();
        predictMotion(timeStep);
        getDispatchInfo().m_timeStep = timeStep;
        performDiscreteCollisionDetection();
        times.collision = secondsSince(start);
        m_manifolds.clear();
        if (autoSleep)
            findAwakeIslands(constraints);
        else
            takeAllManifolds();
        std::sort(m_manifolds.begin(), m_manifolds.end(), isBefore);
        solver.step(*this, m_manifolds, constraints, timeStep);
        if (autoSleep)
            updateActivationState(timeStep);
        clearForces();
        times.solver = secondsSince(start) - times.collision;
        return times;
    }

    StepSolver solver;

    /// Throws std::runtime_error before so many contacts that they would take minutes and fill the memory.
    void performDiscreteCollisionDetection() override {
        updateAabbs();
        computeOverlappingPairs();
        btOverlappingPairCache& pairs = *getPairCache();
        Parting parting;
        if (isCrowd(pairs.getNumOverlappingPairs()))
            pairs.processAllOverlappingPairs(&parting, getDispatcher());
        int const numPairs = pairs.getNumOverlappingPairs();
        if (isCrowd(numPairs))
            throw std::runtime_error("the bodies of the simulation are too near each other: " +
                                     std::to_string(numPairs) + " pairs may touch; put them apart");
        getDispatcher()->dispatchAllCollisionPairs(&pairs, getDispatchInfo(), getDispatcher());
    }

    /// For the boxes that the search for pairs looks at.
    void predictMotion(double timeStep) {
        for (int i = 0; i < m_nonStaticRigidBodies.size(); ++i) {
            btRigidBody& body = *m_nonStaticRigidBodies[i];
            btTransform next = body.getWorldTransform();
            if (body.isActive() && !body.isKinematicObject())
                next.getOrigin() += body.getLinearVelocity() * timeStep;
            body.setInterpolationWorldTransform(next);
        }
    }

private:
    bool isCrowd(int numPairs) const {
        return std::any_of(std::begin(crowds), std::end(crowds), [&](auto const& crowd) {
            return numPairs > crowd.pairs && numPairs / crowd.ofEach > getNumCollisionObjects();
        });
    }

    void takeAllManifolds() {
        btDispatcher& dispatcher = *getDispatcher();
        for (int i = 0; i < dispatcher.getNumManifolds(); ++i) {
            btPersistentManifold* manifold = dispatcher.getManifoldByIndexInternal(i);
            if (manifold->getNumContacts() > 0)
                m_manifolds.push_back(manifold);
        }
    }

    void findAwakeIslands(std::vector<Constraint::Implementation*> const& constraints) {
        m_islandManager->updateActivationState(getCollisionWorld(), getDispatcher());
        for (Constraint::Implementation const* constraint : constraints) {
            if (!constraint->canWork() || !constraint->bodies[1])
                continue;
            btRigidBody const& first = constraint->bodies[0]->implementation().bullet;
            btRigidBody const& second = constraint->bodies[1]->implementation().bullet;
            if (!first.isStaticOrKinematicObject() && !second.isStaticOrKinematicObject())
                m_islandManager->getUnionFind().unite(first.getIslandTag(), second.getIslandTag());
        }
        m_islandManager->storeIslandActivationState(getCollisionWorld());
        m_islandManager->buildAndProcessIslands(getDispatcher(), getCollisionWorld(), this);
    }

    void processIsland(btCollisionObject**, int, btPersistentManifold** manifolds, int numManifolds, int) override {
        m_manifolds.insert(m_manifolds.end(), manifolds, manifolds + numManifolds);
    }

    std::vector<btPersistentManifold*> m_manifolds;
};

PhysicsWorld::PhysicsWorld()
    : m_configuration(std::make_unique<btDefaultCollisionConfiguration>()),
      m_dispatcher(std::make_unique<ContactDispatcher>(m_configuration.get())),
      m_broadphase(std::make_unique<btDbvtBroadphase>()),
      m_world(std::make_unique<World>(m_dispatcher.get(), m_broadphase.get(), &m_solver, m_configuration.get())) {
    btGImpactCollisionAlgorithm::registerAlgorithm(m_dispatcher.get());
    registerPlaneContacts(*m_dispatcher);
    registerBallContacts(*m_dispatcher);
    registerBoxContacts(*m_dispatcher);
    registerSurfaceContacts(*m_dispatcher);
    registerFlatEndContacts(*m_dispatcher);
    registerPartContacts(*m_dispatcher);
    m_world->getDispatchInfo().m_deterministicOverlappingPairs = true;
}

PhysicsWorld::~PhysicsWorld() = default;

void PhysicsWorld::add(RigidBody::Implementation& body) {
    requireMovable(body);
    if (!body.enabled)
        return;
    bool const awake = !m_autoSleep || body.control == RigidBody::KINEMATICS;
    body.bullet.forceActivationState(awake ? DISABLE_DEACTIVATION : ACTIVE_TAG);
    measureShape(body.carrier, *body.bullet.getCollisionShape());
    if (body.geometries.empty()) // meets nothing, so it is in no pairs
        m_world->addRigidBody(&body.bullet, 0, 0);
    else
        m_world->addRigidBody(&body.bullet);
}

void PhysicsWorld::remove(RigidBody::Implementation& body) {
    if (!body.bullet.getBroadphaseHandle())
        return;
    if (m_autoSleep)
        for (auto const& geometry : body.geometries)
            wakeAround(*geometry);
    m_world->removeRigidBody(&body.bullet);
}

void PhysicsWorld::dropPairs() {
    btOverlappingPairCache& cache = *m_broadphase->getOverlappingPairCache();
    for (btBroadphasePairArray& pairs = cache.getOverlappingPairArray(); pairs.size() > 0;) {
        btBroadphasePair const last = pairs[pairs.size() - 1];
        cache.removeOverlappingPair(last.m_pProxy0, last.m_pProxy1, m_dispatcher.get());
    }
}

void PhysicsWorld::add(Geometry& geometry) {
    Geometry::Implementation& self = geometry.implementation();
    self.carrier.world = this;
    self.index = 0;
    self.object.setCollisionShape(self.bulletShape(false));
    self.object.setWorldTransform(toBullet(self.local));
    measureShape(self.carrier, *self.object.getCollisionShape());
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

void PhysicsWorld::findContacts() {
    m_world->predictMotion(m_timeStep);
    m_world->getDispatchInfo().m_timeStep = m_timeStep;
    m_world->performDiscreteCollisionDetection();
}

void PhysicsWorld::setEffort(Effort effort) {
    m_world->solver.effort = effort;
}

void PhysicsWorld::setNumIterations(int iterations) {
    m_world->solver.numIterations = iterations;
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

bool PhysicsWorld::standsAlone() const {
    return std::all_of(m_constraints.begin(), m_constraints.end(), [this](Constraint::Implementation const* joint) {
        return std::all_of(std::begin(joint->frames), std::end(joint->frames), [this](ref_ptr<Frame> const& end) {
            PhysicsWorld const* const other = worldOf(end.get());
            return !other || other == this;
        });
    });
}

StepTimes PhysicsWorld::step(Real timeStep) {
    m_shownContacts.reset();
    m_timeStep = timeStep;
    m_boxesOutdated = true;
    return m_world->advance(timeStep, m_constraints, m_autoSleep);
}

BodyResponse PhysicsWorld::respond(std::vector<RigidBody*> const& bodies, Real timeStep) {
    std::vector<btRigidBody const*> bullets;
    for (RigidBody const* body : bodies)
        bullets.push_back(&body->implementation().bullet);
    return m_world->solver.respond(*m_world, m_constraints, bullets, timeStep);
}

void PhysicsWorld::bringBoxesUpToDate() const {
    if (m_boxesOutdated)
        m_world->updateAabbs();
    m_boxesOutdated = false;
}

} // namespace hyx
