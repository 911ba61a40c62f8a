// Boxes as collision shapes.
#pragma once

#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A box about the origin.
class Box : public Shape {
public:
    /// Half extents in metres. Throws std::invalid_argument unless all are positive and finite.
    explicit Box(hyx::Vec3 const& halfExtents);
    Box(hyx::Real halfX, hyx::Real halfY, hyx::Real halfZ);

    /// Half of the edges, metres. Throws std::invalid_argument unless all are positive and finite.
    void setHalfExtents(hyx::Vec3 const& halfExtents);

    hyx::Vec3 getHalfExtents() const { return m_halfExtents; }

    Type getType() const override { return BOX; }

    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Box() override = default;

private:
    hyx::Vec3 m_halfExtents;
};

} // namespace hyxCollide
