// Refuses numbers that mean nothing, and says which.
#include "reference/hyx/values/number_checks.h"

#include <cmath>
#include <stdexcept>
#include <string>

namespace hyx {

namespace {

void require(bool right, char const* what, char const* rule) {
    if (!right)
        throw std::invalid_argument(std::string(what) + " must be " + rule);
}

bool finite(Vec3 const& value) {
    return std::isfinite(value.x) && std::isfinite(value.y) && std::isfinite(value.z);
}

} // namespace

Real requireFinite(Real value, char const* what) {
    require(std::isfinite(value), what, "a finite number");
    return value;
}

Real requirePositive(Real value, char const* what) {
    require(std::isfinite(value) && value > 0, what, "positive and finite");
    return value;
}

Real requireNonNegative(Real value, char const* what) {
    require(std::isfinite(value) && value >= 0, what, "finite and not negative");
    return value;
}

Real requireShare(Real value, char const* what) {
    require(value >= 0 && value <= 1, what, "between 0 and 1");
    return value;
}

Vec3 requireFinite(Vec3 const& value, char const* what) {
    require(finite(value), what, "finite in all components");
    return value;
}

Vec3 requirePositive(Vec3 const& value, char const* what) {
    require(finite(value) && value.x > 0 && value.y > 0 && value.z > 0, what, "positive and finite in all components");
    return value;
}

Quat requireRotation(Quat const& value, char const* what) {
    require(std::isfinite(value.length2()) && value.length2() > 0, what, "a finite quaternion other than zero");
    return value.normal();
}

AffineMatrix4x4 const& requireFinite(AffineMatrix4x4 const& value, char const* what) {
    for (int i = 0; i < 16; ++i)
        require(std::isfinite(value.ptr()[i]), what, "finite in all elements");
    return value;
}

} // namespace hyx
