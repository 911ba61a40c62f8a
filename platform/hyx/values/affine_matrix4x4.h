// Placements: rotation, scale and translation as one matrix.
#pragma once

#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/vec3.h"

namespace hyx {

/// An affine transform as sixteen numbers, row by row, acting on row vectors: the translation is the last row, and `a *
/// b` applies `a` first. The layout is that of the scene graph's matrices.
class AffineMatrix4x4 {
public:
    /// The identity.
    AffineMatrix4x4();
    /// Rotates, then translates.
    AffineMatrix4x4(Quat const& rotation, Vec3 const& translation);

    explicit AffineMatrix4x4(Quat const& rotation) : AffineMatrix4x4(rotation, Vec3()) {}

    explicit AffineMatrix4x4(Vec3 const& translation) : AffineMatrix4x4(Quat(), translation) {}

    /// Reads sixteen numbers, row by row. Null gives the identity.
    explicit AffineMatrix4x4(double const* rows);

    /// Moves by this way, metres.
    static AffineMatrix4x4 translate(Vec3 const& translation) { return AffineMatrix4x4(translation); }

    /// Turns about the origin.
    static AffineMatrix4x4 rotate(Quat const& rotation) { return AffineMatrix4x4(rotation); }

    /// Stretches by these factors along the axes.
    static AffineMatrix4x4 scale(Vec3 const& factors);
    /// A viewpoint at `eye` whose negative Z axis looks at `center` and whose Y axis leans to `up`: a transform from
    /// world to eye coordinates.
    static AffineMatrix4x4 lookAt(Vec3 const& eye, Vec3 const& center, Vec3 const& up);

    double& operator()(unsigned row, unsigned column) { return m_rows[row][column]; }

    double operator()(unsigned row, unsigned column) const { return m_rows[row][column]; }

    /// Throws std::out_of_range unless both are 0 to 3.
    double get(unsigned row, unsigned column) const;
    void set(unsigned row, unsigned column, double value);

    double* ptr() { return m_rows[0]; }

    double const* ptr() const { return m_rows[0]; }

    /// Where the origin is moved to, metres.
    Vec3 getTranslate() const { return Vec3(m_rows[3][0], m_rows[3][1], m_rows[3][2]); }

    void setTranslate(Vec3 const& translation);
    /// The rotation, any scale taken off.
    Quat getRotate() const;
    /// Replaces rotation and scale; keeps the translation.
    void setRotate(Quat const& rotation);
    /// The lengths of the three axes.
    Vec3 getScale() const;

    /// The inverse transform. Throws std::domain_error for a matrix without one.
    AffineMatrix4x4 inverse() const;

    /// A point is rotated and translated.
    Vec3 transformPoint(Vec3 const& point) const { return transformVector(point) + getTranslate(); }

    /// A direction is only rotated (and scaled).
    Vec3 transformVector(Vec3 const& vector) const {
        return Vec3(vector.x * m_rows[0][0] + vector.y * m_rows[1][0] + vector.z * m_rows[2][0],
                    vector.x * m_rows[0][1] + vector.y * m_rows[1][1] + vector.z * m_rows[2][1],
                    vector.x * m_rows[0][2] + vector.y * m_rows[1][2] + vector.z * m_rows[2][2]);
    }

    friend AffineMatrix4x4 operator*(AffineMatrix4x4 const& first, AffineMatrix4x4 const& second);
    friend bool operator==(AffineMatrix4x4 const& a, AffineMatrix4x4 const& b);

private:
    double m_rows[4][4];
};

/// The point transformed, as `transformPoint`.
inline Vec3 operator*(Vec3 const& point, AffineMatrix4x4 const& matrix) {
    return matrix.transformPoint(point);
}

} // namespace hyx
