// Balls as collision shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A ball about the origin.
class Sphere : public Shape {
public:
    /// Metres. Throws std::invalid_argument unless positive and finite.
    explicit Sphere(hyx::Real radius);

    /// Metres. Throws std::invalid_argument unless positive and finite.
    void setRadius(hyx::Real radius);

    hyx::Real getRadius() const { return m_radius; }

    Type getType() const override { return SPHERE; }

    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Sphere() override = default;

private:
    hyx::Real m_radius = 0;
};

} // namespace hyxCollide
