// Vectors and placements in Bullet's types and back.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"

#include <LinearMath/btTransform.h>

namespace hyx {

inline btVector3 toBullet(Vec3 const& value) {
    return btVector3(value.x, value.y, value.z);
}

inline Vec3 fromBullet(btVector3 const& value) {
    return Vec3(value.x(), value.y(), value.z());
}

inline btQuaternion toBullet(Quat const& value) {
    return btQuaternion(value.x, value.y, value.z, value.w);
}

inline Quat fromBullet(btQuaternion const& value) {
    return Quat(value.x(), value.y(), value.z(), value.w());
}

/// Bullet's matrices act on column vectors, so rows and columns change places. Scale is taken off.
inline btTransform toBullet(AffineMatrix4x4 const& value) {
    return btTransform(toBullet(value.getRotate()), toBullet(value.getTranslate()));
}

inline AffineMatrix4x4 fromBullet(btTransform const& value) {
    AffineMatrix4x4 result;
    btMatrix3x3 const& basis = value.getBasis();
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            result(row, column) = basis[column][row];
    result.setTranslate(fromBullet(value.getOrigin()));
    return result;
}

} // namespace hyx
