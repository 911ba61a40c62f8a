// Rotations as quaternions.
#pragma once

#include "platform/hyx/objects/components.h"
#include "platform/hyx/values/vec3.h"

namespace hyx {

/// A rotation as a unit quaternion. `a * b` rotates by `a` first and then by `b`, in the order of matrix products.
class Quat : public Components<Quat, double, 4> {
public:
    Quat() = default;

    Quat(double x, double y, double z, double w) : x(x), y(y), z(z), w(w) {}

    /// A rotation by `angle` radians about `axis`, which need not have length one; a zero axis gives no rotation.
    Quat(double angle, Vec3 const& axis);
    /// The shortest rotation that takes the direction `from` to the direction `to`.
    Quat(Vec3 const& from, Vec3 const& to);

    /// The vector part, then the scalar one.
    void set(double xValue, double yValue, double zValue, double wValue) {
        *this = Quat(xValue, yValue, zValue, wValue);
    }

    /// The opposite rotation, for quaternions of length one.
    Quat conjugate() const { return Quat(-x, -y, -z, w); }

    /// The opposite rotation, for any quaternion but zero.
    Quat inverse() const;

    /// The vector turned by this rotation.
    Vec3 operator*(Vec3 const& vector) const {
        Vec3 const axis(x, y, z);
        Vec3 const twice = axis.cross(vector) * 2.0;
        return vector + twice * w + axis.cross(twice);
    }

    using Components::operator[];

    /// The angle in radians, 0 to pi.
    double getAngle() const;
    /// The axis with length one; Z for no rotation.
    Vec3 getAxis() const;
    /// Roll about X, then pitch about Y, then yaw about Z, in radians.
    Vec3 getEulerAngles() const;
    /// Turns about X, then Y, then Z, by angles in radians.
    static Quat fromEulerAngles(Vec3 const& rollPitchYaw);

    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
};

static_assert(sizeof(Quat) == 4 * sizeof(double));

inline Quat operator*(Quat const& a, Quat const& b) {
    return Quat(b.w * a.x + b.x * a.w + b.y * a.z - b.z * a.y, b.w * a.y - b.x * a.z + b.y * a.w + b.z * a.x,
                b.w * a.z + b.x * a.y - b.y * a.x + b.z * a.w, b.w * a.w - b.x * a.x - b.y * a.y - b.z * a.z);
}

} // namespace hyx
