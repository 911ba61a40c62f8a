// How joints are put together, and where they are.
#include "reference/machinery/bullet/constraint_implementation.h"

#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/joint_pose.h"
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

Frame* ownFrame(RigidBody* body, Frame* given) {
    return new Frame(given ? given->getLocalMatrix() : AffineMatrix4x4(), body ? body->getFrame() : nullptr);
}

} // namespace

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

std::unique_ptr<ConstraintRow> Constraint::Implementation::makeRow(RowType type) {
    auto row = std::make_unique<ConstraintRow>(type);
    allRows.push_back(row.get());
    return row;
}

void Constraint::Implementation::hold(std::vector<int> const& translations, std::vector<int> const& rotations) {
    for (std::size_t i = 0; i < translations.size() + rotations.size(); ++i)
        rows.push_back(makeRow(i < translations.size() ? TRANSLATIONAL : ROTATIONAL));
    rowAxes = translations;
    rowAxes.insert(rowAxes.end(), rotations.begin(), rotations.end());
    numRotations = static_cast<int>(rotations.size());
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
    if (amount != 0 && !direction.rows[part])
        direction.rows[part] = makeRow(direction.kind == ABOUT_Z ? ROTATIONAL : TRANSLATIONAL);
}

Constraint::Implementation::Pose Constraint::Implementation::pose() const {
    return {toBullet(frames[0]->getMatrix()), toBullet(frames[1]->getMatrix())};
}

Real Constraint::Implementation::position(FreeDirection& direction) {
    Pose const now = pose();
    if (direction.kind != ABOUT_Z)
        return now.position(direction.kind);
    double const angle = now.position(ABOUT_Z);
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

std::vector<ConstraintRow*> Constraint::Implementation::activeRows() const {
    std::vector<ConstraintRow*> active;
    std::copy_if(allRows.begin(), allRows.end(), std::back_inserter(active),
                 [](ConstraintRow const* row) { return row->active; });
    return active;
}

} // namespace hyx
