// The equations of all points of a chain, and of the bodies that it touches, in one substep.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <array>
#include <vector>

namespace hyxWire {

/// Row after row.
using Matrix3 = std::array<hyx::Real, 9>;

/// How a point of a chain gives way to the pull of its two segments. Forces are meant times the square of the substep,
/// so that they are in kg m.
struct ChainNode {
    /// A point that rides alone is the only one on its body, and no other body of the chain moves with that one.
    enum Kind { FREE, HELD, RIDES, RIDES_ALONE, TOUCHES };

    Kind kind = FREE;
    hyx::Real mass = 0; ///< kg, of a free or touching point
    int column = -1;    ///< the first of the six unknowns of the body beneath; -1 when nothing moves it
    hyx::Vec3 arm;      ///< from the centre of that body
    hyx::Vec3 normal;   ///< of a touching point: out of the surface
    hyx::Vec3 rubbing;  ///< of a touching point: friction for a load of one
    hyx::Real grip = 0; ///< kg, of a touching point: further friction against each metre of slip
    hyx::Vec3 free;     ///< of a touching point: the direction along the surface that is not gripped; or zero
    hyx::Real gap = 0;  ///< metres, of a touching point, where it would be without pull
    hyx::Vec3 slip;     ///< metres, of a touching point, without pull

    hyx::Vec3 gripped(hyx::Vec3 const& way) const { return way - normal * normal.dot(way) - free * free.dot(way); }
};

/// A segment: a stiff spring along its direction. As a taut string it also resists being moved to the side, without
/// which substeps would have to be shorter than a wave takes along a segment.
struct ChainLink {
    hyx::Vec3 direction;
    hyx::Real stretch = 0;   ///< metres, without pull
    hyx::Real stiffness = 0; ///< kg
    hyx::Real tautness = 0;  ///< kg

    hyx::Vec3 force(hyx::Vec3 const& lengthening) const {
        hyx::Real const along = direction.dot(lengthening);
        return direction * ((stiffness - tautness) * along) + lengthening * tautness;
    }
};

/// Each point answers to its neighbours, in bands of blocks. Friction follows from the very loads that are sought. The
/// shifts of the bodies, which touch any number of points, are a border around the bands.
class ChainSystem {
public:
    std::vector<ChainNode> nodes;
    std::vector<ChainLink> links;    ///< one fewer than nodes
    std::vector<hyx::Real> mobility; ///< of the bodies, row-major: shift by force

    /// Fills `moves` and `shifts`.
    void solve();

    std::vector<hyx::Vec3> moves;
    /// Of the bodies, along and about X, Y and Z.
    std::vector<hyx::Real> shifts;

    hyx::Real tension(std::size_t link) const;
    /// Of a touching point on the surface.
    hyx::Real loadOf(std::size_t node) const;
    /// Adds the force of a point on the body beneath to six numbers.
    void addForce(std::size_t node, hyx::Real* six) const;
    /// How far the bodies' shift moves what lies under a point.
    hyx::Vec3 shiftUnder(std::size_t node) const;

private:
    using Moves = std::vector<hyx::Vec3>;

    struct Row {
        Matrix3 lower;
        Matrix3 inverse;
        Matrix3 upper;
    };

    hyx::Vec3 pull(std::size_t node, Moves const& moves, bool stretched) const;
    hyx::Vec3 forceOnBody(std::size_t node, Moves const& moves, bool stretched) const;
    void findAlone();
    bool isCoupled(int column, int other) const;
    /// How a force on a point moves it along with its body.
    Matrix3 mobilityOf(ChainNode const& node) const;
    void shiftBy(ChainNode const& node, hyx::Vec3 const& force, hyx::Real* six) const;
    hyx::Vec3 unitShiftUnder(std::size_t node, std::size_t unknown) const;
    void factor();
    void eliminate(Moves& right) const;
    void solveBorder();

    std::vector<Row> m_rows;
    std::vector<Moves> m_columns;
    std::vector<std::size_t> m_onBodies; ///< points on bodies whose shift is in the border
    std::vector<std::size_t> m_unknowns; ///< of the border, in `shifts`
};

} // namespace hyxWire
