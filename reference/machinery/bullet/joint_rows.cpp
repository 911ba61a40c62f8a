// What the rows of a joint aim at during a step.
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/joint_pose.h"
#include "reference/machinery/dynamics/moving_body.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace hyx {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
/// Metres or radians. Smaller errors are taken back within a substep, larger ones by half in each, as a script may have
/// put bodies anywhere.
constexpr double coarseError = 1e-3;
/// How near a bound a direction is at it, metres or radians.
constexpr double boundReach = 1e-6;

/// The rotation from one frame to another as a vector of the world: its direction the axis, its length the angle.
btVector3 rotationBetween(btMatrix3x3 const& from, btMatrix3x3 const& to) {
    btQuaternion turn;
    (to * from.transpose()).getRotation(turn);
    Quat const q = fromBullet(turn);
    return toBullet(q.getAxis() * q.getAngle());
}

/// How a row takes an error back: without compliance and damping exactly; else as a spring of 1 / compliance whose
/// error dies out in `damping` seconds. Each half of a substep has half of its force.
struct Give {
    double speed;
    double softness;

    Give(double error, double compliance, double damping, bool atPlaces, double substep, double step) {
        if (compliance == 0 && damping == 0) {
            speed = atPlaces ? -error / (std::abs(error) > coarseError ? 2 * substep : substep) : 0;
            softness = 0;
            return;
        }
        double const time = (damping > 0 ? damping : step) + (atPlaces ? substep : 0);
        speed = -error / time;
        softness = 2 * compliance / (substep * time);
    }
};

double sumOrZero(double force, double time) {
    return force == 0 ? 0 : force * time;
}

} // namespace

void Constraint::Implementation::rest() {
    for (ConstraintRow* row : allRows) {
        row->active = row->working = false;
        row->force = row->sum = 0;
    }
    works = false;
}

void Constraint::Implementation::begin(MovingBody& first, MovingBody& second) {
    rest();
    works = true;
    moving[0] = &first;
    moving[1] = &second;
    for (int i : {0, 1})
        places[i] = moving[i]->transform().inverse() * toBullet(frames[i]->getMatrix());
    for (FreeDirection& direction : free)
        direction.position = position(direction);
}

Constraint::Implementation::Pose Constraint::Implementation::movingPose() const {
    return {moving[0]->transform() * places[0], moving[1]->transform() * places[1]};
}

void Constraint::Implementation::aimAtPlaces(Real substep, Real step) {
    Pose const now = movingPose();
    for (ConstraintRow* row : allRows)
        row->working = false;
    for (FreeDirection& direction : free)
        direction.startPosition = direction.position;
    aimHeld(now, true, substep, step);
    for (FreeDirection& direction : free)
        aimFree(direction, now, true, substep, step);
    measure(0);
    for (ConstraintRow* row : allRows) {
        row->startValue = row->value;
        row->active = row->active || row->working;
    }
}

void Constraint::Implementation::aimAtSpeeds(Real substep, Real step) {
    measure(substep);
    Pose const now = movingPose();
    for (ConstraintRow* row : allRows)
        row->working = false;
    aimHeld(now, false, substep, step);
    for (FreeDirection& direction : free)
        aimFree(direction, now, false, substep, step);
}

void Constraint::Implementation::start(ConstraintRow& row, Real substep, Real lowerForce, Real upperForce) {
    row.working = true;
    row.hold = ConstraintRow::FREE;
    row.lowerImpulse = sumOrZero(lowerForce, substep / 2);
    row.upperImpulse = sumOrZero(upperForce, substep / 2);
    linearize(row);
}

void Constraint::Implementation::linearize(ConstraintRow& row) const {
    row.linear = row.type == TRANSLATIONAL ? row.axis : btVector3(0, 0, 0);
    for (int i : {0, 1}) {
        row.angular[i] = row.type == TRANSLATIONAL ? (row.anchors[i] - moving[i]->position).cross(row.axis) : row.axis;
        row.response[i] = moving[i]->inverseInertia * row.angular[i];
    }
}

void Constraint::Implementation::aimHeld(Pose const& pose, bool atPlaces, Real substep, Real step) {
    // A joint that turns about Z only sees how far the two Z axes are apart.
    btVector3 const turn = numRotations == 3 ? rotationBetween(pose.second.getBasis(), pose.first.getBasis())
                                             : pose.second.getBasis().getColumn(2).cross(pose.axis(2));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ConstraintRow& row = *rows[i];
        row.axis = pose.axis(rowAxes[i]);
        // Both bodies are held at the second frame's origin, so that the row is exact while the second frame slides far
        // from the first.
        row.anchors[0] = row.anchors[1] = pose.second.getOrigin();
        double const error = (row.type == TRANSLATIONAL ? pose.gap() : turn).dot(row.axis);
        Give const give(error, compliance, damping, atPlaces, substep, step);
        row.targetSpeed = give.speed;
        row.softness = give.softness;
        start(row, substep, row.lowerForce, row.upperForce);
    }
}

void Constraint::Implementation::aimFree(FreeDirection& direction, Pose const& pose, bool atPlaces, Real substep,
                                         Real step) {
    auto const use = [&](Part part, ElementaryConstraint const& element, double speed, double softness) {
        ConstraintRow& row = *direction.rows[part];
        row.axis = direction.kind == ALONG_LINE ? pose.line() : pose.axis(2);
        row.anchors[0] = direction.kind == ALONG_LINE ? pose.first.getOrigin() : pose.second.getOrigin();
        row.anchors[1] = pose.second.getOrigin();
        row.targetSpeed = speed;
        row.softness = softness;
        start(row, substep, element.getForceRange().lower(), element.getForceRange().upper());
    };
    Motor1D const& motor = *direction.motor;
    if (motor.isEnabled())
        use(MOTOR, motor, motor.getTargetSpeed(),
            Give(0, motor.getCompliance(), motor.getDamping(), atPlaces, substep, step).softness);
    Lock1D const& lock = *direction.lock;
    if (lock.isEnabled()) {
        Give const give(direction.position - lock.getPosition(), lock.getCompliance(), lock.getDamping(), atPlaces,
                        substep, step);
        use(LOCK, lock, give.speed, give.softness);
    }
    if (direction.range->isEnabled()) {
        use(RANGE, *direction.range, 0, 0);
        aimRange(direction, *direction.rows[RANGE], atPlaces, substep, step);
    }
    aimResistance(direction, pose, substep);
}

void Constraint::Implementation::aimRange(FreeDirection& direction, ConstraintRow& row, bool atPlaces, Real substep,
                                          Real step) {
    Real const now = direction.position;
    RangeReal const range = direction.range->getRange();
    bool const atLower = now - range.lower() <= range.upper() - now;
    double const beyond = now - (atLower ? range.lower() : range.upper());
    bool const within = atLower ? beyond > 0 : beyond < 0;
    if (!std::isfinite(beyond) || (!atPlaces && within && std::abs(beyond) > boundReach)) {
        row.working = false;
        return;
    }
    if (within) {
        // The row only keeps the substep from passing the bound.
        row.targetSpeed = atPlaces ? -beyond / substep : 0;
    } else {
        Give const give(beyond, direction.range->getCompliance(), direction.range->getDamping(), atPlaces, substep,
                        step);
        row.targetSpeed = give.speed;
        row.softness = give.softness;
    }
    if (range.size() > 0)
        (atLower ? row.lowerImpulse : row.upperImpulse) = 0;
}

void Constraint::Implementation::aimResistance(FreeDirection& direction, Pose const& pose, Real substep) {
    auto const use = [&](Part part, Real greatestForce, Real softness) {
        ConstraintRow& row = *direction.rows[part];
        row.axis = direction.kind == ALONG_LINE ? pose.line() : pose.axis(2);
        row.anchors[0] = direction.kind == ALONG_LINE ? pose.first.getOrigin() : pose.second.getOrigin();
        row.anchors[1] = pose.second.getOrigin();
        row.targetSpeed = 0;
        row.softness = softness;
        start(row, substep, -greatestForce, greatestForce);
    };
    auto const [friction, viscosity] = direction.resistance;
    if (friction > 0)
        use(FRICTION, friction, 0);
    if (viscosity > 0)
        use(VISCOSITY, infinity, 2 / (viscosity * substep));
}

void Constraint::Implementation::measure(Real time) {
    Pose const now = movingPose();
    btVector3 const turn = numRotations == 3 ? rotationBetween(now.second.getBasis(), now.first.getBasis())
                                             : now.second.getBasis().getColumn(2).cross(now.axis(2));
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i]->value = (rows[i]->type == TRANSLATIONAL ? now.gap() : turn).dot(now.axis(rowAxes[i]));
    for (FreeDirection& direction : free) {
        double position = now.position(direction.kind);
        if (direction.kind == ABOUT_Z) {
            // At these speeds a substep may turn by more than half a round.
            double const expected =
                direction.startPosition + (moving[0]->spin - moving[1]->spin).dot(now.axis(2)) * time;
            double const round = 2 * std::numbers::pi;
            position += round * std::round((expected - position) / round);
        }
        direction.position = position;
        for (auto const& row : direction.rows)
            if (row)
                row->value = position;
    }
}

void Constraint::Implementation::finishHalf() {
    for (ConstraintRow* row : allRows)
        if (row->working)
            row->sum += row->impulse;
}

void Constraint::Implementation::collect(Real timeStep) {
    for (ConstraintRow* row : allRows)
        row->force = row->active ? row->sum / timeStep : 0;
    for (FreeDirection& direction : free) {
        direction.motor->setCurrentForce(direction.rows[MOTOR]->force);
        direction.range->setCurrentForce(direction.rows[RANGE]->force);
        direction.lock->setCurrentForce(direction.rows[LOCK]->force);
        if (direction.kind != ABOUT_Z || !works) {
            // Seen every step, no turn is missed.
            position(direction);
            continue;
        }
        direction.lastAngle = movingPose().position(ABOUT_Z);
        direction.turns = std::round((direction.position - direction.lastAngle) / (2 * std::numbers::pi));
    }
}

} // namespace hyx
