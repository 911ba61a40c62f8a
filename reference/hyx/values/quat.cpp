// The arithmetic of rotations.
#include "platform/hyx/values/quat.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyx {

namespace {

/// Any direction at right angles to the given one.
Vec3 perpendicular(Vec3 const& direction) {
    Vec3 const other = std::abs(direction.x) < 0.9 ? Vec3(1, 0, 0) : Vec3(0, 1, 0);
    return direction.cross(other).normal();
}

} // namespace

Quat::Quat(double angle, Vec3 const& axis) {
    Vec3 const unit = axis.normal();
    if (unit.length2() == 0)
        return;
    double const s = std::sin(angle / 2);
    *this = Quat(unit.x * s, unit.y * s, unit.z * s, std::cos(angle / 2));
}

Quat::Quat(Vec3 const& from, Vec3 const& to) {
    Vec3 const a = from.normal();
    Vec3 const b = to.normal();
    if (a.length2() == 0 || b.length2() == 0)
        return;
    double const cosine = a.dot(b);
    if (cosine < -1 + 1e-12) {
        *this = Quat(std::numbers::pi, perpendicular(a));
        return;
    }
    Vec3 const axis = a.cross(b);
    *this = Quat(axis.x, axis.y, axis.z, 1 + cosine).normal();
}

Quat Quat::inverse() const {
    double const square = length2();
    return square > 0 ? conjugate() / square : Quat();
}

double Quat::getAngle() const {
    return 2 * std::atan2(Vec3(x, y, z).length(), std::abs(w));
}

Vec3 Quat::getAxis() const {
    Vec3 const axis = (w < 0 ? Vec3(-x, -y, -z) : Vec3(x, y, z)).normal();
    return axis.length2() > 0 ? axis : Vec3(0, 0, 1);
}

Vec3 Quat::getEulerAngles() const {
    Quat const q = normal();
    double const sinPitch = std::clamp(2 * (q.w * q.y - q.z * q.x), -1.0, 1.0);
    // At the poles only the sum or difference of roll and yaw is defined: yaw takes it all.
    if (std::abs(sinPitch) > 1 - 1e-12)
        return Vec3(0, std::copysign(std::numbers::pi / 2, sinPitch),
                    -2 * std::copysign(1.0, sinPitch) * std::atan2(q.x, q.w));
    return Vec3(std::atan2(2 * (q.w * q.x + q.y * q.z), 1 - 2 * (q.x * q.x + q.y * q.y)), std::asin(sinPitch),
                std::atan2(2 * (q.w * q.z + q.x * q.y), 1 - 2 * (q.y * q.y + q.z * q.z)));
}

Quat Quat::fromEulerAngles(Vec3 const& rollPitchYaw) {
    return Quat(rollPitchYaw.x, Vec3(1, 0, 0)) * Quat(rollPitchYaw.y, Vec3(0, 1, 0)) *
           Quat(rollPitchYaw.z, Vec3(0, 0, 1));
}

} // namespace hyx
