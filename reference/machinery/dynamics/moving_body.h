// The state of one body while a step is worked out.
#pragma once

#include <LinearMath/btMatrix3x3.h>
#include <LinearMath/btTransform.h>

class btRigidBody;

namespace hyx {

/// Lies at its centre of mass, along its principal axes. What stands still or sleeps has no inverse mass.
struct MovingBody {
    btRigidBody* bullet = nullptr;
    btVector3 position{0, 0, 0};
    btQuaternion rotation = btQuaternion::getIdentity();
    btMatrix3x3 basis = btMatrix3x3::getIdentity();
    btVector3 velocity{0, 0, 0};
    btVector3 spin{0, 0, 0};
    double inverseMass = 0;
    btVector3 moments{0, 0, 0};
    btVector3 inverseMoments{0, 0, 0};
    btMatrix3x3 inverseInertia{0, 0, 0, 0, 0, 0, 0, 0, 0};
    /// The least moment that impulses meet; `stiffen` raises it.
    double leastMoment = 0;
    /// By gravity and by the forces of the step.
    btVector3 acceleration{0, 0, 0};
    btVector3 torque{0, 0, 0};
    /// What a second leaves of the velocity.
    double linearDecay = 1;
    double angularDecay = 1;

    bool isFree() const { return inverseMass > 0; }

    btTransform transform() const { return btTransform(basis, position); }

    btVector3 velocityAt(btVector3 const& arm) const { return velocity + spin.cross(arm); }

    void updateInertia();
    /// Makes the body as slow to turn as a substep can follow.
    void stiffen(double moment);
    /// The forces of the step act for a while.
    void accelerate(double time);
    void damp(double time);
    /// Flies on by its own momentum. The turn is exact for bodies with two equal moments, and keeps the angular
    /// momentum for all others.
    void drift(double time);
    bool isFinite() const;

private:
    void turn(btVector3 const& angle);
    void turnFreely(double time);
};

} // namespace hyx
