// Cones as collision shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A cone along Y, its base centre at -height/2 and its tip at height/2.
class Cone : public Shape {
public:
    /// Metres; the height is that from base to tip. Throws std::invalid_argument unless both are positive and finite.
    Cone(hyx::Real radius, hyx::Real height);

    /// Of the base, metres. Throws std::invalid_argument unless positive and finite.
    void setRadius(hyx::Real radius);

    hyx::Real getRadius() const { return m_radius; }

    /// From base to tip, metres. Throws std::invalid_argument unless positive and finite.
    void setHeight(hyx::Real height);

    hyx::Real getHeight() const { return m_height; }

    Type getType() const override { return CONE; }

    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Cone() override = default;

private:
    hyx::Real m_radius = 0;
    hyx::Real m_height = 0;
};

} // namespace hyxCollide
