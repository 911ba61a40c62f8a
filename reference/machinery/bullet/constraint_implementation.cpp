// Gives a joint its rows in Bullet, and keeps them in step with its settings and its bodies.
#include "reference/machinery/bullet/constraint_implementation.h"

#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace hyx {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Bullet's arithmetic does not stand infinite limits.
double impulseLimit(double force, double timeStep) {
    return std::clamp(force * timeStep, -1e30, 1e30);
}

Frame* ownFrame(RigidBody* body, Frame* given) {
    return new Frame(given ? given->getLocalMatrix() : AffineMatrix4x4(), body ? body->getFrame() : nullptr);
}

/// The rotation from one frame to another as a vector of the world: its direction the axis, its length the angle.
btVector3 rotationBetween(btMatrix3x3 const& from, btMatrix3x3 const& to) {
    btQuaternion turn;
    (to * from.transpose()).getRotation(turn);
    Quat const q = fromBullet(turn);
    return toBullet(q.getAxis() * q.getAngle());
}

/// How a row gives way: a spring of 1 / compliance, whose error dies out in `damping` seconds.
struct Give {
    double errorSpeed;
    double softness;

    Give(double compliance, double damping, double timeStep) {
        double const time = (damping > 0 ? damping : timeStep) + timeStep;
        errorSpeed = 1 / time;
        softness = compliance / (timeStep * time);
    }
};

} // namespace

/// Where the attachment frames are.
struct Constraint::Implementation::Pose {
    btTransform first;
    btTransform second;

    btVector3 axis(int index) const { return first.getBasis().getColumn(index); }

    btVector3 gap() const { return first.getOrigin() - second.getOrigin(); }

    /// The direction of the line from the second origin to the first; the Z axis where they coincide.
    btVector3 line() const { return gap().length2() > 1e-24 ? gap().normalized() : axis(2); }
};

Constraint::Implementation::Implementation(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : bodies{body1, body2} {
    if (!body1)
        throw std::invalid_argument("a constraint needs a first body");
    if (body1 == body2)
        throw std::invalid_argument("a constraint needs two different bodies");
    frames[0] = ownFrame(body1, frame1);
    // Without a second body and frame the joint is made where the first frame is now.
    if (body2 || frame2)
        frames[1] = ownFrame(body2, frame2);
    else
        frames[1] = new Frame(frames[0]->getMatrix());
}

Constraint::Implementation::~Implementation() = default;

btRigidBody& Constraint::Implementation::side(int index) const {
    return bodies[index] ? bodies[index]->implementation().bullet : btTypedConstraint::getFixedBody();
}

std::unique_ptr<ConstraintRow> Constraint::Implementation::makeRow(RowType type) {
    auto row = std::make_unique<ConstraintRow>(side(0), side(1), type);
    allRows.push_back(row.get());
    return row;
}

void Constraint::Implementation::hold(std::vector<int> const& translations, std::vector<int> const& rotations) {
    for (std::size_t i = 0; i < translations.size() + rotations.size(); ++i)
        rows.push_back(makeRow(i < translations.size() ? TRANSLATIONAL : ROTATIONAL));
    rowAxes = translations;
    rowAxes.insert(rowAxes.end(), rotations.begin(), rotations.end());
}

void Constraint::Implementation::leave(Free kind, Motor1D* motor, Range1D* range, Lock1D* lock) {
    FreeDirection& direction = free.emplace_back(FreeDirection{kind, motor, range, lock, {}});
    for (Part part : {MOTOR, RANGE, LOCK})
        direction.rows[part] = makeRow(kind == ABOUT_Z ? ROTATIONAL : TRANSLATIONAL);
    direction.lastAngle = kind == ABOUT_Z ? position(direction) : 0;
}

void Constraint::Implementation::resist(Part part, Real amount) {
    FreeDirection& direction = free.front();
    direction.resistance[part - FRICTION] = amount;
    if (amount == 0 || direction.rows[part])
        return;
    // All rows of a constraint enter the world together.
    PhysicsWorld* const former = world;
    if (former)
        former->remove(*this);
    direction.rows[part] = makeRow(direction.kind == ABOUT_Z ? ROTATIONAL : TRANSLATIONAL);
    if (former)
        former->add(*this);
}

Constraint::Implementation::Pose Constraint::Implementation::pose() const {
    return {toBullet(frames[0]->getMatrix()), toBullet(frames[1]->getMatrix())};
}

Real Constraint::Implementation::position(FreeDirection& direction) {
    Pose const now = pose();
    if (direction.kind == ALONG_Z)
        return now.gap().dot(now.axis(2));
    if (direction.kind == ALONG_LINE)
        return now.gap().length();
    btVector3 const x = now.second.getBasis().getColumn(0);
    double const angle = std::atan2(-x.dot(now.axis(1)), x.dot(now.axis(0)));
    if (angle - direction.lastAngle > std::numbers::pi)
        --direction.turns;
    else if (angle - direction.lastAngle < -std::numbers::pi)
        ++direction.turns;
    direction.lastAngle = angle;
    return angle + 2 * std::numbers::pi * direction.turns;
}

Real Constraint::Implementation::speed(FreeDirection const& direction) const {
    Pose const now = pose();
    auto const spin = [this](int index) {
        return bodies[index] ? bodies[index]->implementation().spin() : btVector3(0, 0, 0);
    };
    if (direction.kind == ABOUT_Z)
        return (spin(0) - spin(1)).dot(now.axis(2));
    auto const velocityAt = [this](int index, btVector3 const& point) {
        return bodies[index] ? toBullet(bodies[index]->getPointVelocity(fromBullet(point))) : btVector3(0, 0, 0);
    };
    btVector3 const end = now.second.getOrigin();
    if (direction.kind == ALONG_Z)
        return (velocityAt(0, end) - velocityAt(1, end)).dot(now.axis(2));
    return (velocityAt(0, now.first.getOrigin()) - velocityAt(1, end)).dot(now.line());
}

bool Constraint::Implementation::canWork() const {
    bool moves = false;
    for (auto const& body : bodies) {
        if (!body)
            continue;
        RigidBody::Implementation const& self = body->implementation();
        if (!self.enabled || self.carrier.world != world)
            return false;
        moves = moves || self.movesByForces();
    }
    return enabled && world && moves;
}

void Constraint::Implementation::rest() {
    for (ConstraintRow* row : allRows) {
        row->active = false;
        row->force = 0;
        row->setEnabled(false);
    }
}

void Constraint::Implementation::prepare(Real timeStep) {
    rest();
    if (!canWork())
        return;
    Pose const now = pose();
    prepareHeld(now, timeStep);
    for (FreeDirection& direction : free)
        prepareFree(direction, now, timeStep);
    for (ConstraintRow* row : allRows)
        row->setEnabled(row->active);
}

void Constraint::Implementation::prepareHeld(Pose const& pose, Real timeStep) {
    Give const give(compliance, damping, timeStep);
    auto const numRotations =
        std::count_if(rows.begin(), rows.end(), [](auto const& row) { return row->type == ROTATIONAL; });
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
        row.targetSpeed = -error * give.errorSpeed;
        row.softness = give.softness;
        row.lowerImpulse = impulseLimit(row.lowerForce, timeStep);
        row.upperImpulse = impulseLimit(row.upperForce, timeStep);
        row.active = true;
    }
}

void Constraint::Implementation::aim(ConstraintRow& row, FreeDirection const& direction, Pose const& pose) const {
    row.axis = direction.kind == ALONG_LINE ? pose.line() : pose.axis(2);
    row.anchors[0] = direction.kind == ALONG_LINE ? pose.first.getOrigin() : pose.second.getOrigin();
    row.anchors[1] = pose.second.getOrigin();
}

void Constraint::Implementation::prepareFree(FreeDirection& direction, Pose const& pose, Real timeStep) {
    Real const now = position(direction);
    auto const start = [&](Part part, ElementaryConstraint const& element) -> ConstraintRow& {
        ConstraintRow& row = *direction.rows[part];
        aim(row, direction, pose);
        row.softness = Give(element.getCompliance(), element.getDamping(), timeStep).softness;
        row.lowerImpulse = impulseLimit(element.getForceRange().lower(), timeStep);
        row.upperImpulse = impulseLimit(element.getForceRange().upper(), timeStep);
        row.active = true;
        return row;
    };
    if (direction.motor->isEnabled())
        start(MOTOR, *direction.motor).targetSpeed = direction.motor->getSpeed();
    if (direction.lock->isEnabled()) {
        Give const give(direction.lock->getCompliance(), direction.lock->getDamping(), timeStep);
        start(LOCK, *direction.lock).targetSpeed = (direction.lock->getPosition() - now) * give.errorSpeed;
    }
    if (direction.range->isEnabled())
        prepareRange(direction, now, start(RANGE, *direction.range), timeStep);
    prepareResistance(direction, pose, timeStep);
}

void Constraint::Implementation::prepareRange(FreeDirection& direction, Real now, ConstraintRow& row, Real timeStep) {
    RangeReal const range = direction.range->getRange();
    bool const atLower = now - range.lower() <= range.upper() - now;
    double const left = (atLower ? range.lower() : range.upper()) - now;
    row.active = std::isfinite(left);
    if (!row.active)
        return;
    // Within the range the row only keeps the step from passing the bound; beyond it, it leads back.
    bool const beyond = atLower ? left > 0 : left < 0;
    row.targetSpeed =
        left * (beyond ? Give(direction.range->getCompliance(), direction.range->getDamping(), timeStep).errorSpeed
                       : 1 / timeStep);
    if (!beyond)
        row.softness = 0;
    if (range.size() > 0)
        (atLower ? row.lowerImpulse : row.upperImpulse) = 0;
}

void Constraint::Implementation::prepareResistance(FreeDirection& direction, Pose const& pose, Real timeStep) {
    auto const start = [&](Part part, Real greatestForce, Real softness) {
        ConstraintRow& row = *direction.rows[part];
        aim(row, direction, pose);
        row.targetSpeed = 0;
        row.softness = softness;
        row.upperImpulse = impulseLimit(greatestForce, timeStep);
        row.lowerImpulse = -row.upperImpulse;
        row.active = true;
    };
    auto const [friction, viscosity] = direction.resistance;
    if (friction > 0)
        start(FRICTION, friction, 0);
    if (viscosity > 0)
        start(VISCOSITY, infinity, 1 / (viscosity * timeStep));
}

void Constraint::Implementation::collect(Real timeStep) {
    for (ConstraintRow* row : allRows)
        row->force = row->active && inWorld ? row->internalGetAppliedImpulse() / timeStep : 0;
    for (FreeDirection& direction : free) {
        direction.motor->setCurrentForce(direction.rows[MOTOR]->force);
        direction.range->setCurrentForce(direction.rows[RANGE]->force);
        direction.lock->setCurrentForce(direction.rows[LOCK]->force);
        // Seen every step, no turn is missed.
        position(direction);
    }
}

std::vector<ConstraintRow*> Constraint::Implementation::activeRows() const {
    std::vector<ConstraintRow*> active;
    std::copy_if(allRows.begin(), allRows.end(), std::back_inserter(active),
                 [](ConstraintRow const* row) { return row->active; });
    return active;
}

} // namespace hyx
