// The arithmetic of placements.
#include "platform/hyx/values/affine_matrix4x4.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyx {

namespace {

double const identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

void requireElement(unsigned row, unsigned column) {
    if (row > 3 || column > 3)
        throw std::out_of_range("matrix rows and columns run from 0 to 3");
}

/// From the rows of a rotation matrix; the branch with the largest component divides safely.
Quat quatFromRows(Vec3 const& x, Vec3 const& y, Vec3 const& z) {
    double const trace = x.x + y.y + z.z;
    if (trace > 0)
        return Quat(y.z - z.y, z.x - x.z, x.y - y.x, 1 + trace).normal();
    if (x.x >= y.y && x.x >= z.z)
        return Quat(1 + x.x - y.y - z.z, x.y + y.x, z.x + x.z, y.z - z.y).normal();
    if (y.y >= z.z)
        return Quat(x.y + y.x, 1 + y.y - x.x - z.z, y.z + z.y, z.x - x.z).normal();
    return Quat(z.x + x.z, y.z + z.y, 1 + z.z - x.x - y.y, x.y - y.x).normal();
}

} // namespace

AffineMatrix4x4::AffineMatrix4x4() : AffineMatrix4x4(identity) {}

AffineMatrix4x4::AffineMatrix4x4(double const* rows) {
    std::copy_n(rows ? rows : identity, 16, m_rows[0]);
}

AffineMatrix4x4::AffineMatrix4x4(Quat const& rotation, Vec3 const& translation) : AffineMatrix4x4() {
    setRotate(rotation);
    setTranslate(translation);
}

AffineMatrix4x4 AffineMatrix4x4::scale(Vec3 const& factors) {
    AffineMatrix4x4 result;
    for (unsigned i = 0; i < 3; ++i)
        result(i, i) = factors[i];
    return result;
}

AffineMatrix4x4 AffineMatrix4x4::lookAt(Vec3 const& eye, Vec3 const& center, Vec3 const& up) {
    Vec3 const forward = (center - eye).normal();
    Vec3 const side = forward.cross(up).normal();
    if (side.length2() == 0)
        throw std::invalid_argument(
            "a viewpoint needs an eye apart from the center and an up direction that is not along the view");
    Vec3 const above = side.cross(forward);
    AffineMatrix4x4 result;
    for (unsigned i = 0; i < 3; ++i) {
        result(i, 0) = side[i];
        result(i, 1) = above[i];
        result(i, 2) = -forward[i];
    }
    result.setTranslate(Vec3(-eye.dot(side), -eye.dot(above), eye.dot(forward)));
    return result;
}

double AffineMatrix4x4::get(unsigned row, unsigned column) const {
    requireElement(row, column);
    return m_rows[row][column];
}

void AffineMatrix4x4::set(unsigned row, unsigned column, double value) {
    requireElement(row, column);
    m_rows[row][column] = value;
}

void AffineMatrix4x4::setTranslate(Vec3 const& translation) {
    std::copy_n(translation.ptr(), 3, m_rows[3]);
}

Quat AffineMatrix4x4::getRotate() const {
    auto const axis = [this](unsigned row) { return Vec3(m_rows[row][0], m_rows[row][1], m_rows[row][2]).normal(); };
    return quatFromRows(axis(0), axis(1), axis(2));
}

void AffineMatrix4x4::setRotate(Quat const& rotation) {
    Quat const unit = rotation.length2() > 0 ? rotation.normal() : Quat();
    Vec3 const axes[3] = {unit * Vec3(1, 0, 0), unit * Vec3(0, 1, 0), unit * Vec3(0, 0, 1)};
    for (unsigned row = 0; row < 3; ++row)
        std::copy_n(axes[row].ptr(), 3, m_rows[row]);
}

Vec3 AffineMatrix4x4::getScale() const {
    auto const length = [this](unsigned row) { return Vec3(m_rows[row][0], m_rows[row][1], m_rows[row][2]).length(); };
    return Vec3(length(0), length(1), length(2));
}

AffineMatrix4x4 AffineMatrix4x4::inverse() const {
    Vec3 const x(m_rows[0][0], m_rows[0][1], m_rows[0][2]);
    Vec3 const y(m_rows[1][0], m_rows[1][1], m_rows[1][2]);
    Vec3 const z(m_rows[2][0], m_rows[2][1], m_rows[2][2]);
    double const determinant = x.dot(y.cross(z));
    if (!(std::abs(determinant) > 0))
        throw std::domain_error("the matrix has no inverse");
    Vec3 const columns[3] = {y.cross(z) / determinant, z.cross(x) / determinant, x.cross(y) / determinant};
    AffineMatrix4x4 result;
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column)
            result(row, column) = columns[column][row];
    result.setTranslate(-result.transformVector(getTranslate()));
    return result;
}

AffineMatrix4x4 operator*(AffineMatrix4x4 const& first, AffineMatrix4x4 const& second) {
    AffineMatrix4x4 result;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column) {
            double sum = 0;
            for (unsigned i = 0; i < 4; ++i)
                sum += first(row, i) * second(i, column);
            result(row, column) = sum;
        }
    return result;
}

bool operator==(AffineMatrix4x4 const& a, AffineMatrix4x4 const& b) {
    return std::equal(a.ptr(), a.ptr() + 16, b.ptr());
}

} // namespace hyx
