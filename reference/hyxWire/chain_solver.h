// The motion of a chain of stiff segments.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <vector>

namespace hyxWire {

/// Point masses joined in a row by elastic segments, with optional stiffness against bending.
///
/// Each substep predicts the points, then solves the stretch of all segments at once as one tridiagonal system with
/// compliance, so that a stiff chain neither lags nor rings: sweeping the segments one by one leaves several per cent
/// of stretch.
class ChainSolver {
public:
    struct Point {
        hyx::Vec3 position;        ///< metres, world
        hyx::Vec3 velocity;        ///< m/s
        hyx::Real inverseMass = 0; ///< 1/kg, 0 holds the point on its course
        hyx::Vec3 force;           ///< out: mean force of the chain on the point over the last step, newtons
    };

    std::vector<Point> points;
    std::vector<hyx::Real> restLengths; ///< metres, one fewer than points
    std::vector<hyx::Real> tensions;    ///< out: newtons, mean over the last step
    hyx::Real axialStiffness = 1e6;     ///< newtons for a strain of 1
    hyx::Real bendStiffness = 0;        ///< N m2
    bool tensionOnly = true;            ///< segments buckle instead of pushing
    hyx::Real damping = 0;              ///< part of the velocity lost in a second

    template <class Bytes>
    void exchangeState(Bytes& bytes) {
        bytes(points, restLengths, tensions, axialStiffness, bendStiffness, tensionOnly, damping);
    }

    /// Advances by `timeStep` seconds in `substeps` parts under `gravity` in m/s2. Held points move with their own
    /// velocity. All rest lengths grow by the factor `growth`, a part in each substep: at once it would be a blow.
    void step(hyx::Real timeStep, hyx::UInt substeps, hyx::Vec3 const& gravity, hyx::Real growth = 1);
    /// Length of the chain in metres as it hangs.
    hyx::Real length() const;
    /// Curvature (1/m) at an inner point.
    hyx::Real curvature(std::size_t point) const;

private:
    void resistBending(hyx::Real h);
    void solveStretch(hyx::Real h);
    void solveRows(hyx::Real h);

    std::vector<hyx::Vec3> m_directions;
    std::vector<hyx::Real> m_diagonal, m_upper, m_right, m_multiplier, m_stretch;
    std::vector<char> m_slack;
    std::vector<hyx::Vec3> m_impulse;
};

} // namespace hyxWire
