// One direction in which a joint holds, drives or brakes its bodies.
#pragma once

#include "platform/hyx/joints/constraint.h"

#include <LinearMath/btVector3.h>

#include <limits>

namespace hyx {

/// Governs the place of the first body relative to the second, along or about `axis`.
struct ConstraintRow {
    /// Whether a row may push as it needs to, or has come to one of its bounds.
    enum Hold { FREE, LOWER, UPPER };

    explicit ConstraintRow(Constraint::RowType type) : type(type) {}

    Constraint::RowType const type;
    btVector3 axis{0, 0, 1};
    /// Where the force acts on the first and on the second body, in the world.
    btVector3 anchors[2] = {{0, 0, 0}, {0, 0, 0}};
    /// What the user allows, in newtons or newton metres.
    Real lowerForce = -std::numeric_limits<Real>::infinity();
    Real upperForce = std::numeric_limits<Real>::infinity();
    /// Whether the row took part in the last step, and its force then.
    bool active = false;
    Real force = 0;

    /// Metres or radians, at the start of a substep and where the bodies were put last.
    double startValue = 0;
    double value = 0;
    /// Whether the row takes part in the present half of a substep, and what it aims at there.
    bool working = false;
    double targetSpeed = 0;
    /// Speed given way per impulse.
    double softness = 0;
    double lowerImpulse = 0;
    double upperImpulse = 0;
    double impulse = 0;
    Hold hold = FREE;
    /// Of the whole step so far.
    double sum = 0;

    /// Of the speed by the velocities of the bodies; the second body's share has the other sign.
    btVector3 linear{0, 0, 0};
    btVector3 angular[2] = {{0, 0, 0}, {0, 0, 0}};
    /// The spin that a unit of impulse gives.
    btVector3 response[2] = {{0, 0, 0}, {0, 0, 0}};
    /// The speed that a unit of impulse gives, were there no other rows.
    double mobility = 0;
    /// Makes the diagonal of the system one.
    double scale = 1;
};

} // namespace hyx
