// Cylinders as collision shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A cylinder about the origin, along Y.
class Cylinder : public Shape {
public:
    /// Metres; the height is the whole length. Throws std::invalid_argument unless both are positive and finite.
    Cylinder(hyx::Real radius, hyx::Real height);

    /// Metres. Throws std::invalid_argument unless positive and finite.
    void setRadius(hyx::Real radius);

    hyx::Real getRadius() const { return m_radius; }

    /// The whole length, metres. Throws std::invalid_argument unless positive and finite.
    void setHeight(hyx::Real height);

    hyx::Real getHeight() const { return m_height; }

    Type getType() const override { return CYLINDER; }

    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Cylinder() override = default;

private:
    hyx::Real m_radius = 0;
    hyx::Real m_height = 0;
};

} // namespace hyxCollide
