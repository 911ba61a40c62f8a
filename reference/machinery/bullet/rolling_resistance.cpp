// Brakes bodies that roll, by the weight on their contacts.
#include "reference/machinery/bullet/rolling_resistance.h"

#include <BulletCollision/BroadphaseCollision/btDispatcher.h>
#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>
#include <BulletDynamics/Dynamics/btRigidBody.h>

#include <algorithm>

namespace hyx {

namespace {

btRigidBody const* rigidBody(btCollisionObject const* object) {
    return btRigidBody::upcast(object);
}

btVector3 spinOf(btRigidBody const* body) {
    return body ? body->getAngularVelocity() : btVector3(0, 0, 0);
}

/// The moment of inertia against rolling over a contact point; 0 for what does not move by forces.
double rollingInertia(btRigidBody const* body, btVector3 const& point, btVector3 const& axis) {
    if (!body || body->getInvMass() == 0)
        return 0;
    double const about = axis.dot(body->getInvInertiaTensorWorld() * axis);
    return 1 / about + (point - body->getCenterOfMassPosition()).length2() / body->getInvMass();
}

void brake(btPersistentManifold const& manifold, btManifoldPoint const& point, Real timeStep) {
    auto* first = const_cast<btRigidBody*>(rigidBody(manifold.getBody0()));
    auto* second = const_cast<btRigidBody*>(rigidBody(manifold.getBody1()));
    btVector3 rolling = spinOf(first) - spinOf(second);
    rolling -= point.m_normalWorldOnB * rolling.dot(point.m_normalWorldOnB);
    double const speed = rolling.length();
    if (speed < 1e-9)
        return;
    btVector3 const axis = rolling / speed;
    double const inertia = std::max(rollingInertia(first, point.getPositionWorldOnA(), axis),
                                    rollingInertia(second, point.getPositionWorldOnB(), axis));
    // No more than what stops the rolling within the step, shared among the points of the pair.
    double const most = inertia * speed / timeStep / manifold.getNumContacts();
    double const torque = std::min(point.m_combinedSpinningFriction * point.m_appliedImpulse / timeStep, most);
    if (first)
        first->applyTorque(axis * -torque);
    if (second)
        second->applyTorque(axis * torque);
}

} // namespace

void applyRollingResistance(btDispatcher& dispatcher, Real timeStep) {
    for (int i = 0; i < dispatcher.getNumManifolds(); ++i) {
        btPersistentManifold const& manifold = *dispatcher.getManifoldByIndexInternal(i);
        for (int j = 0; j < manifold.getNumContacts(); ++j)
            if (manifold.getContactPoint(j).m_combinedSpinningFriction > 0)
                brake(manifold, manifold.getContactPoint(j), timeStep);
    }
}

} // namespace hyx
