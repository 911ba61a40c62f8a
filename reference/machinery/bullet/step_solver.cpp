// The course of a step.
#include "reference/machinery/bullet/step_solver.h"

#include "reference/machinery/bullet/collision_carrier.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <BulletDynamics/Dynamics/btDiscreteDynamicsWorld.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>

namespace hyx {

namespace {

/// Substeps of contacts and of joints are no longer than these, in seconds.
constexpr double longestOfContacts = 1.0 / 480;
/// Metres; smaller bodies fall over in less time, by the root of their size.
constexpr double smallRadius = 0.07;
constexpr double longestOfJoints = 1.0 / 60;
/// Of joints that let their bodies swing: their energy is right by the square of it, and as long as it stays the same.
constexpr double longestOfSwings = 1.0 / 240;
/// Radians that a joined body may turn in a substep.
constexpr double greatestTurn = 0.25;
constexpr int mostSubsteps = 128;
/// m/s; rounds that change less are enough.
constexpr double settledSpeed = 1e-9;
constexpr int mostSweeps = 500;
/// m/s; a round that changes more than this is not the last, up to a number: a heavy load sets down on a light stack.
constexpr double shockSpeed = 0.02;
constexpr int mostForShocks = 20;
constexpr int leastForShocks = 4;
/// The same under heavy loads; after a blow, a share of what the first round changes is enough.
constexpr double loadedSpeed = 1e-5;
constexpr double loadedShare = 2e-3;
constexpr int mostForLoads = 120;
/// Islands of more patches have fewer such rounds.
constexpr double wholeEffort = 64;

RigidBody::Implementation& implementationOf(btCollisionObject const& object) {
    return static_cast<hyxCollide::CollisionCarrier const*>(object.getUserPointer())->body->implementation();
}

MovingBody stateOf(btRigidBody& source) {
    MovingBody body;
    body.bullet = &source;
    body.position = source.getWorldTransform().getOrigin();
    body.basis = source.getWorldTransform().getBasis();
    body.basis.getRotation(body.rotation);
    RigidBody::Implementation const& self = implementationOf(source);
    body.velocity = self.velocity();
    body.spin = self.spin();
    if (source.isKinematicObject())
        return body;
    body.inverseMass = source.getInvMass();
    body.inverseMoments = source.getInvInertiaDiagLocal();
    body.moments = btVector3(1 / body.inverseMoments.x(), 1 / body.inverseMoments.y(), 1 / body.inverseMoments.z());
    body.updateInertia();
    body.acceleration = source.getGravity() + source.getTotalForce() * source.getInvMass();
    body.torque = source.getTotalTorque();
    body.linearDecay = 1 - source.getLinearDamping();
    body.angularDecay = 1 - source.getAngularDamping();
    return body;
}

} // namespace

void StepSolver::takeBodies(btDiscreteDynamicsWorld& world) {
    m_bodies.assign(1, MovingBody());
    auto& all = world.getNonStaticRigidBodies();
    for (int i = 0; i < all.size(); ++i) {
        btRigidBody& source = *all[i];
        source.setCompanionId(0);
        if (!source.isKinematicObject() && !source.isActive())
            continue;
        source.setCompanionId(static_cast<int>(m_bodies.size()));
        m_bodies.push_back(stateOf(source));
    }
    m_touching.assign(m_bodies.size(), 0);
    m_mechanismOf.assign(m_bodies.size(), nullptr);
}

void StepSolver::takeMechanisms(std::vector<Constraint::Implementation*> const& constraints) {
    std::vector<Constraint::Implementation*> working;
    m_newStructure.clear();
    for (Constraint::Implementation* constraint : constraints) {
        constraint->rest();
        if (!constraint->canWork())
            continue;
        MovingBody* sides[2] = {&m_bodies[0], &m_bodies[0]};
        bool awake = false;
        for (int i : {0, 1})
            if (constraint->bodies[i]) {
                btRigidBody const& bullet = constraint->bodies[i]->implementation().bullet;
                if (!bullet.isStaticObject())
                    sides[i] = &m_bodies[std::max(bullet.getCompanionId(), 0)];
                awake = awake || sides[i]->isFree();
            }
        if (!awake)
            continue;
        constraint->begin(*sides[0], *sides[1]);
        working.push_back(constraint);
        m_newStructure.push_back(constraint);
        for (MovingBody const* side : sides)
            m_newStructure.push_back(side->isFree() ? side->bullet : nullptr);
    }
    if (m_newStructure != m_structure) {
        m_structure.swap(m_newStructure);
        buildMechanisms(working);
    }
    for (auto const& mechanism : m_mechanisms) {
        mechanism->begin();
        mechanism->touches = false;
    }
}

void StepSolver::buildMechanisms(std::vector<Constraint::Implementation*> const& working) {
    std::vector<int> parents(m_bodies.size());
    for (std::size_t i = 0; i < parents.size(); ++i)
        parents[i] = static_cast<int>(i);
    auto const rootOf = [&](MovingBody const* body) {
        int root = static_cast<int>(body - m_bodies.data());
        while (parents[root] != root)
            root = parents[root] = parents[parents[root]];
        return root;
    };
    for (Constraint::Implementation const* joint : working)
        if (joint->moving[0]->isFree() && joint->moving[1]->isFree())
            parents[rootOf(joint->moving[0])] = rootOf(joint->moving[1]);
    std::map<int, std::vector<Constraint::Implementation*>> groups;
    for (Constraint::Implementation* joint : working)
        groups[rootOf(joint->moving[joint->moving[0]->isFree() ? 0 : 1])].push_back(joint);
    m_mechanisms.clear();
    for (auto& [root, joints] : groups)
        m_mechanisms.push_back(std::make_unique<Mechanism>(std::move(joints)));
}

int StepSolver::numSubsteps(Island const& island, double step) const {
    double longest = step;
    if (!m_contacts.isEmpty())
        longest = (effort == USUAL ? longestOfContacts : longestOfContacts / 2) *
                  std::sqrt(std::min(1.0, m_contacts.smallestRadius() / smallRadius));
    else if (!island.mechanisms.empty())
        longest = std::any_of(island.mechanisms.begin(), island.mechanisms.end(), std::mem_fn(&Mechanism::swings))
                      ? longestOfSwings
                      : longestOfJoints;
    double number = step / longest;
    for (Mechanism const* mechanism : island.mechanisms)
        number = std::max(number, step * mechanism->greatestSpin() / greatestTurn);
    return static_cast<int>(std::clamp(std::ceil(number - 1e-6), 1.0, double(mostSubsteps)));
}

void StepSolver::step(btDiscreteDynamicsWorld& world, std::vector<btPersistentManifold*> const& manifolds,
                      std::vector<Constraint::Implementation*> const& constraints, double step) {
    takeBodies(world);
    takeMechanisms(constraints);
    for (Island const& island : findIslands(m_bodies, manifolds, m_mechanisms))
        this->step(island, step);
    giveBack();
    for (Constraint::Implementation* constraint : constraints)
        constraint->collect(step);
}

void StepSolver::step(Island const& island, double step) {
    // What moves by itself has been at its end for another island.
    for (MovingBody* body : island.bodies)
        if (!body->isFree())
            *body = stateOf(*body->bullet);
    m_contacts.begin(island.manifolds, m_bodies, step);
    findTouching(island);
    int const number = numSubsteps(island, step);
    m_contacts.setSubstep(step / number);
    for (int i = 0; i < number; ++i)
        substep(island, step / number, step, number);
    requireFinite(island);
    m_contacts.finish();
}

void StepSolver::findTouching(Island const& island) {
    if (island.mechanisms.empty())
        return;
    m_contacts.forPairs([&](MovingBody const& first, MovingBody const& second) {
        m_touching[&first - m_bodies.data()] = m_touching[&second - m_bodies.data()] = 1;
    });
    for (Mechanism* mechanism : island.mechanisms)
        for (MovingBody const* body : mechanism->bodies())
            if (body->isFree())
                m_mechanismOf[body - m_bodies.data()] = mechanism;
    m_contacts.findLinked([&](MovingBody const& first, MovingBody const& second) {
        Mechanism const* const mechanism = m_mechanismOf[&first - m_bodies.data()];
        return mechanism && mechanism == m_mechanismOf[&second - m_bodies.data()];
    });
    for (Mechanism* mechanism : island.mechanisms)
        for (MovingBody const* body : mechanism->bodies())
            mechanism->touches = mechanism->touches || (body->isFree() && m_touching[body - m_bodies.data()]);
}

void StepSolver::substep(Island const& island, double substep, double step, int numSubsteps) {
    int const numSweeps = std::max(1, (numIterations + numSubsteps) / (2 * numSubsteps));
    for (Mechanism* mechanism : island.mechanisms)
        mechanism->loosen();
    for (MovingBody* body : island.bodies)
        body->accelerate(substep / 2);
    for (Mechanism* mechanism : island.mechanisms)
        mechanism->aimAtPlaces(substep, step);
    m_contacts.aimAtPlaces(substep);
    solve(island, true, substep, numSweeps);
    for (Mechanism* mechanism : island.mechanisms) {
        mechanism->correctPlaces(substep);
        mechanism->finishHalf();
    }
    m_contacts.advance(substep);
    for (MovingBody* body : island.bodies)
        body->drift(substep);
    for (MovingBody* body : island.bodies)
        body->accelerate(substep / 2);
    for (Mechanism* mechanism : island.mechanisms)
        mechanism->aimAtSpeeds(substep, step);
    m_contacts.aimAtSpeeds(substep);
    solve(island, false, substep, numSweeps);
    for (Mechanism* mechanism : island.mechanisms)
        mechanism->finishHalf();
    m_contacts.finishSubstep();
    for (MovingBody* body : island.bodies)
        body->damp(substep);
}

void StepSolver::solve(Island const& island, bool atPlaces, double substep, int numSweeps) {
    for (Mechanism* mechanism : island.mechanisms)
        atPlaces ? mechanism->solvePlaces(substep) : mechanism->solve();
    if (m_contacts.isEmpty())
        return;
    bool const all = effort == ALL || m_contacts.bounces();
    // In a great heap blows are many, and each is felt by few.
    double const part = std::min(1.0, wholeEffort / m_contacts.numPatches());
    int const forShocks = std::max(static_cast<int>(part * mostForShocks), leastForShocks);
    int const forLoads = static_cast<int>(part * mostForLoads * std::min(1.0, 2 * m_contacts.heaviness()));
    bool const heavy = forLoads > forShocks;
    int const most = all ? mostSweeps : std::max({numSweeps, forShocks, forLoads});
    // Joints that are solved between the rounds would lead them astray.
    bool const onwards = (all || heavy) && std::none_of(island.mechanisms.begin(), island.mechanisms.end(),
                                                        [](Mechanism const* mechanism) { return mechanism->touches; });
    double const shock = shockSpeed * std::min(1.0, m_contacts.smallestRadius() / smallRadius);
    double enough = heavy ? loadedSpeed : shockSpeed;
    m_contacts.startRounds();
    for (int i = 0; i < most; ++i) {
        double const change = onwards ? m_contacts.sweepOnwards() : m_contacts.sweep();
        for (Mechanism* mechanism : island.mechanisms)
            if (mechanism->touches)
                mechanism->solve();
        if (i == 0 && heavy)
            enough = std::max(loadedSpeed, std::min(shock, loadedShare * change));
        if (change < (all || i + 1 < numSweeps ? settledSpeed : enough))
            return;
    }
}

void StepSolver::requireFinite(Island const& island) {
    for (MovingBody const* body : island.bodies)
        if (!body->isFinite())
            throw std::runtime_error("the state of the body '" + implementationOf(*body->bullet).owner.getName() +
                                     "' is no longer finite");
}

void StepSolver::giveBack() {
    for (MovingBody const& body : m_bodies) {
        if (!body.bullet)
            continue;
        body.bullet->setWorldTransform(body.transform());
        body.bullet->setInterpolationWorldTransform(body.transform());
        if (!body.isFree())
            continue;
        body.bullet->setLinearVelocity(body.velocity);
        body.bullet->setAngularVelocity(body.spin);
        body.bullet->updateInertiaTensor();
    }
}

} // namespace hyx
