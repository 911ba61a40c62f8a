// Ground given by heights over a grid, as a collision shape.
#pragma once

#include "platform/hyx/values/vector.h"
#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A surface z = h(x, y) over a rectangle about the origin, given at the knots of a grid; all below it counts as solid.
/// Only for bodies that do not move by forces.
class HeightField : public Shape {
public:
    /// All heights 0. Throws std::invalid_argument unless both resolutions (numbers of knots) are at least 2 and both
    /// sizes (metres) are positive.
    HeightField(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY);
    /// Heights in metres, row by row from the lowest y, x first. Throws std::invalid_argument when their number is not
    /// resolutionX x resolutionY or one is not finite.
    HeightField(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY,
                hyx::RealVector const& heights);

    /// How many heights there are along X.
    hyx::UInt getResolutionX() const { return m_resolutionX; }

    /// How many heights there are along Y.
    hyx::UInt getResolutionY() const { return m_resolutionY; }

    /// From the first to the last height along X, metres.
    hyx::Real getSizeX() const { return m_sizeX; }

    /// From the first to the last height along Y, metres.
    hyx::Real getSizeY() const { return m_sizeY; }

    /// Throws std::out_of_range for a knot that is not there, and std::invalid_argument for a height that is not
    /// finite.
    void setHeight(hyx::UInt i, hyx::UInt j, hyx::Real height);
    hyx::Real getHeight(hyx::UInt i, hyx::UInt j) const;
    /// All heights at once, as in the constructor.
    void setHeights(hyx::RealVector const& heights);

    hyx::RealVector const& getHeights() const { return m_heights; }

    /// The height of the surface over a local point; outside, that of the nearest edge.
    hyx::Real getHeightAt(hyx::Real x, hyx::Real y) const;
    /// The local position of a knot.
    hyx::Vec3 getVertex(hyx::UInt i, hyx::UInt j) const;

    /// Writes heights without a notice for each; `heightsChanged` tells of all together.
    hyx::Real* heightsForWriting() { return m_heights.data(); }

    void heightsChanged();

    Type getType() const override { return HEIGHT_FIELD; }

    hyx::Real getVolume() const override { return 0; }

    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~HeightField() override = default;

private:
    hyx::UInt m_resolutionX;
    hyx::UInt m_resolutionY;
    hyx::Real m_sizeX;
    hyx::Real m_sizeY;
    hyx::RealVector m_heights;
};

} // namespace hyxCollide
