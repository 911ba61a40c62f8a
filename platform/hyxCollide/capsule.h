// Capsules as collision shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A cylinder with half balls at both ends, about the origin, along Y.
class Capsule : public Shape {
public:
    /// Metres; the height is that of the cylinder without the half balls. Throws std::invalid_argument unless both are
    /// positive and finite.
    Capsule(hyx::Real radius, hyx::Real height);

    /// Metres. Throws std::invalid_argument unless positive and finite.
    void setRadius(hyx::Real radius);

    hyx::Real getRadius() const { return m_radius; }

    /// Metres, without the half balls. Throws std::invalid_argument unless positive and finite.
    void setHeight(hyx::Real height);

    hyx::Real getHeight() const { return m_height; }

    Type getType() const override { return CAPSULE; }

    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Capsule() override = default;

private:
    hyx::Real m_radius = 0;
    hyx::Real m_height = 0;
};

} // namespace hyxCollide
