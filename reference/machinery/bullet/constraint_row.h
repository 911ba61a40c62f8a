// A constraint of a single row for Bullet's solvers.
#pragma once

#include "platform/hyx/joints/constraint.h"

#include <BulletDynamics/ConstraintSolver/btTypedConstraint.h>

namespace hyx {

/// One row of a constraint, as a bullet constraint of its own, because bullet tells the impulse of a constraint's last
/// row only. The row drives the velocity of the first body relative to the second, along or about `axis`, to
/// `targetSpeed`.
class ConstraintRow : public btTypedConstraint {
public:
    ConstraintRow(btRigidBody& first, btRigidBody& second, Constraint::RowType type);

    void getInfo1(btConstraintInfo1* info) override;
    void getInfo2(btConstraintInfo2* info) override;

    void setParam(int, btScalar, int) override {}

    btScalar getParam(int, int) const override { return 0; }

    Constraint::RowType const type;
    btVector3 axis{0, 0, 1};
    /// Where the force acts on the first and on the second body, in the world.
    btVector3 anchors[2] = {{0, 0, 0}, {0, 0, 0}};
    Real targetSpeed = 0;
    Real lowerImpulse = 0;
    Real upperImpulse = 0;
    /// Speed given way per impulse.
    Real softness = 0;
    bool active = false;
    /// What the user allows, in newtons or newton metres.
    Real lowerForce = -SIMD_INFINITY;
    Real upperForce = SIMD_INFINITY;
    /// The force of the last step.
    Real force = 0;
};

} // namespace hyx
