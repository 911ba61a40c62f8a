// What the rows of a joint aim at during a step.
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/joint_pose.h"
#include "reference/machinery/bullet/row_give.h"
#include "reference/machinery/dynamics/moving_body.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace hyx {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
/// How near a bound a direction is at it, metres or radians.
constexpr double boundReach = 1e-6;

/// The rotation from one frame to another as a vector of the world: its direction the axis, its length the angle.
btVector3 rotationBetween(btMatrix3x3 const& from, btMatrix3x3 const& to) {
    btQuaternion turn;
    (to * from.transpose()).getRotation(turn);
    Quat const q = fromBullet(turn);
    return toBullet(q.getAxis() * q.getAngle());
}

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

bool Constraint::Implementation::swings() const {
    auto const isHeld = [](FreeDirection const& direction) {
        return direction.motor->isEnabled() || (direction.lock->isEnabled() && direction.lock->getCompliance() == 0);
    };
    return compliance > 0 || numRotations == 0 || !std::all_of(free.begin(), free.end(), isHeld);
}

Constraint::Implementation::Pose Constraint::Implementation::movingPose() const {
    return {moving[0]->transform() * places[0], moving[1]->transform() * places[1]};
}

void Constraint::Implementation::aimAtPlaces(Real substep, Real step) {
    SubstepHalf const half{true, substep, step};
    Pose const now = movingPose();
    for (ConstraintRow* row : allRows)
        row->working = false;
    for (FreeDirection& direction : free)
        direction.startPosition = direction.position;
    aimHeld(now, half);
    for (FreeDirection& direction : free)
        aimFree(direction, now, half);
    measure(0);
    for (ConstraintRow* row : allRows) {
        row->startValue = row->value;
        row->active = row->active || row->working;
    }
}

void Constraint::Implementation::aimAtSpeeds(Real substep, Real step) {
    SubstepHalf const half{false, substep, step};
    measure(substep);
    Pose const now = movingPose();
    for (ConstraintRow* row : allRows)
        row->working = false;
    aimHeld(now, half);
    for (FreeDirection& direction : free)
        aimFree(direction, now, half);
}

void Constraint::Implementation::start(ConstraintRow& row, Give const& give, Real substep, Real lowerForce,
                                       Real upperForce) {
    row.working = true;
    row.hold = ConstraintRow::FREE;
    row.targetSpeed = give.speed;
    row.softness = give.softness;
    row.lowerImpulse = sumOrZero(lowerForce, substep / 2);
    row.upperImpulse = sumOrZero(upperForce, substep / 2);
}

void Constraint::Implementation::linearize(ConstraintRow& row) const {
    row.linear = row.type == TRANSLATIONAL ? row.axis : btVector3(0, 0, 0);
    for (int i : {0, 1})
        row.angular[i] = row.type == TRANSLATIONAL ? (row.anchors[i] - moving[i]->position).cross(row.axis) : row.axis;
    respond(row);
}

void Constraint::Implementation::respond(ConstraintRow& row) const {
    row.mobility = 0;
    for (int i : {0, 1}) {
        row.response[i] = moving[i]->inverseInertia * row.angular[i];
        row.mobility += row.linear.length2() * moving[i]->inverseMass + row.angular[i].dot(row.response[i]);
    }
}

void Constraint::Implementation::aimHeld(Pose const& pose, SubstepHalf const& half) {
    // A joint that turns about Z only sees how far the two Z axes are apart.
    btVector3 const turn = numRotations == 3 ? rotationBetween(pose.second.getBasis(), pose.first.getBasis())
                                             : pose.second.getBasis().getColumn(2).cross(pose.axis(2));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ConstraintRow& row = *rows[i];
        row.axis = pose.axis(rowAxes[i]);
        // Both bodies are held at the second frame's origin, so that the row is exact while the second frame slides far
        // from the first.
        row.anchors[0] = row.anchors[1] = pose.second.getOrigin();
        linearize(row);
        double const error = (row.type == TRANSLATIONAL ? pose.gap() : turn).dot(row.axis);
        start(row, Give(row, error, compliance, damping, half), half.substep, row.lowerForce, row.upperForce);
    }
}

ConstraintRow& Constraint::Implementation::along(FreeDirection const& direction, Part part, Pose const& pose) const {
    ConstraintRow& row = *direction.rows[part];
    row.axis = direction.kind == ALONG_LINE ? pose.line() : pose.axis(2);
    row.anchors[0] = direction.kind == ALONG_LINE ? pose.first.getOrigin() : pose.second.getOrigin();
    row.anchors[1] = pose.second.getOrigin();
    linearize(row);
    return row;
}

void Constraint::Implementation::aimFree(FreeDirection& direction, Pose const& pose, SubstepHalf const& half) {
    auto const use = [&](Part part, ElementaryConstraint const& element, auto const& giveOf) {
        ConstraintRow& row = along(direction, part, pose);
        RangeReal const forces = element.getForceRange();
        start(row, giveOf(row), half.substep, forces.lower(), forces.upper());
    };
    Motor1D const& motor = *direction.motor;
    if (motor.isEnabled())
        use(MOTOR, motor, [&](ConstraintRow const& row) {
            return Give::drive(row, motor.getTargetSpeed(), motor.getCompliance(), motor.getDamping(), half);
        });
    Lock1D const& lock = *direction.lock;
    if (lock.isEnabled())
        use(LOCK, lock, [&](ConstraintRow const& row) {
            Real const error = direction.position - lock.getPosition();
            Real const fastest = motor.getMaximumSpeed();
            if (lock.getCompliance() == 0 && std::abs(error) > fastest * half.substep)
                return Give::drive(row, -std::copysign(fastest, error), 0, 0, half);
            return Give(row, error, lock.getCompliance(), lock.getDamping(), half);
        });
    if (direction.range->isEnabled()) {
        use(RANGE, *direction.range, [](ConstraintRow const&) { return Give(); });
        aimRange(direction, *direction.rows[RANGE], half);
    }
    aimResistance(direction, pose, half);
}

void Constraint::Implementation::aimRange(FreeDirection& direction, ConstraintRow& row, SubstepHalf const& half) {
    Real const now = direction.position;
    RangeReal const range = direction.range->getRange();
    bool const atLower = now - range.lower() <= range.upper() - now;
    double const beyond = now - (atLower ? range.lower() : range.upper());
    bool const within = atLower ? beyond > 0 : beyond < 0;
    if (!std::isfinite(beyond) || (!half.atPlaces && within && std::abs(beyond) > boundReach)) {
        row.working = false;
        return;
    }
    if (within) {
        // The row only keeps the substep from passing the bound.
        row.targetSpeed = half.atPlaces ? -beyond / half.substep : 0;
    } else {
        Give const give(row, beyond, direction.range->getCompliance(), direction.range->getDamping(), half);
        row.targetSpeed = give.speed;
        row.softness = give.softness;
    }
    if (range.size() > 0)
        (atLower ? row.lowerImpulse : row.upperImpulse) = 0;
}

void Constraint::Implementation::aimResistance(FreeDirection& direction, Pose const& pose, SubstepHalf const& half) {
    auto const [friction, viscosity] = direction.resistance;
    if (friction > 0)
        start(along(direction, FRICTION, pose), Give(), half.substep, -friction, friction);
    if (viscosity > 0) {
        ConstraintRow& row = along(direction, VISCOSITY, pose);
        start(row, Give::brake(row, viscosity, half), half.substep, -infinity, infinity);
    }
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
