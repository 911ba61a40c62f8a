// The free motion of a body.
#include "reference/machinery/dynamics/moving_body.h"

#include <algorithm>
#include <cmath>

namespace hyx {

namespace {

/// Radians; the splitting of the turn of a body with three different moments is of second order.
constexpr double longestTurn = 0.05;
constexpr double equalMoments = 1e-9;

btQuaternion turnBy(btVector3 const& angle) {
    double const half = angle.length() / 2;
    double const scale = half > 1e-8 ? std::sin(half) / (2 * half) : 0.5;
    return btQuaternion(angle.x() * scale, angle.y() * scale, angle.z() * scale, std::cos(half));
}

bool areEqual(double first, double second) {
    return std::abs(first - second) <= equalMoments * std::max(first, second);
}

btQuaternion turnAbout(int axis, double angle) {
    btVector3 vector(0, 0, 0);
    vector[axis] = angle;
    return turnBy(vector);
}

} // namespace

void MovingBody::updateInertia() {
    btVector3 inverse = inverseMoments;
    if (leastMoment > 0)
        inverse.setMin(btVector3(1, 1, 1) / leastMoment);
    inverseInertia = basis.scaled(inverse) * basis.transpose();
}

void MovingBody::stiffen(double moment) {
    leastMoment = moment;
    updateInertia();
}

void MovingBody::accelerate(double time) {
    velocity += acceleration * time;
    spin += inverseInertia * torque * time;
}

void MovingBody::damp(double time) {
    if (linearDecay != 1)
        velocity *= std::pow(linearDecay, time);
    if (angularDecay != 1)
        spin *= std::pow(angularDecay, time);
}

void MovingBody::turn(btVector3 const& angle) {
    rotation = (turnBy(angle) * rotation).normalized();
    basis.setRotation(rotation);
}

void MovingBody::drift(double time) {
    position += velocity * time;
    if (spin.length2() == 0)
        return;
    if (!isFree() || (areEqual(moments[0], moments[1]) && areEqual(moments[1], moments[2])))
        turn(spin * time);
    else
        turnFreely(time);
    updateInertia();
}

/// Two moments that are equal make the body precess evenly about its angular momentum while it spins evenly about its
/// third axis. A third moment adds a turn about one of its axes, half before and half after.
void MovingBody::turnFreely(double time) {
    int axis = 0;
    for (int i = 1; i < 3; ++i) {
        auto const difference = [this](int k) {
            return std::abs(moments[(k + 1) % 3] - moments[(k + 2) % 3]) /
                   std::max(moments[(k + 1) % 3], moments[(k + 2) % 3]);
        };
        if (difference(i) < difference(axis))
            axis = i;
    }
    int const odd = (axis + 1) % 3;
    double const common = moments[(axis + 2) % 3];
    bool const symmetric = areEqual(moments[odd], common);
    btVector3 const momentum = basis * (moments * (spin * basis));
    double const steps =
        symmetric ? 1 : std::clamp(std::ceil(spin.length() * std::abs(time) / longestTurn), 1.0, 1000.0);
    double const part = time / steps;
    double const oddRate = 1 / moments[odd] - 1 / common;
    double const axisRate = 1 / moments[axis] - 1 / common;
    btQuaternion const precession = turnBy(momentum * (part / common));
    auto const along = [&](int k) { return btMatrix3x3(rotation).getColumn(k).dot(momentum); };
    for (int i = 0; i < steps; ++i) {
        if (!symmetric)
            rotation = rotation * turnAbout(odd, along(odd) * oddRate * part / 2);
        rotation = precession * rotation * turnAbout(axis, along(axis) * axisRate * part);
        if (!symmetric)
            rotation = rotation * turnAbout(odd, along(odd) * oddRate * part / 2);
    }
    rotation.normalize();
    basis.setRotation(rotation);
    spin = basis * (inverseMoments * (momentum * basis));
}

bool MovingBody::isFinite() const {
    auto const sum = [](btVector3 const& value) { return value.x() + value.y() + value.z(); };
    return std::isfinite(sum(position) + sum(velocity) + sum(spin) + rotation.length2());
}

} // namespace hyx
