// The checks of arguments that all areas share.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/real.h"

#include <stdexcept>

namespace hyx {

/// Throws std::invalid_argument with the message unless `valid`.
inline void requireArgument(bool valid, char const* message) {
    if (!valid)
        throw std::invalid_argument(message);
}

/// Each throws std::invalid_argument "WHAT must be ..." for a number that breaks the rule and returns the number
/// otherwise.
Real requireFinite(Real value, char const* what);
Real requirePositive(Real value, char const* what);
Real requireNonNegative(Real value, char const* what);
Real requireShare(Real value, char const* what);
Vec3 requireFinite(Vec3 const& value, char const* what);
Vec3 requirePositive(Vec3 const& value, char const* what);
/// Returns the rotation with length one.
Quat requireRotation(Quat const& value, char const* what);
AffineMatrix4x4 const& requireFinite(AffineMatrix4x4 const& value, char const* what);

} // namespace hyx
