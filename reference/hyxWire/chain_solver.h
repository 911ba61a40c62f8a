// The motion of a chain of stiff segments.
#pragma once

#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "reference/hyxWire/chain_system.h"

#include <functional>
#include <vector>

namespace hyxWire {

/// Point masses joined in a row by elastic segments, with optional stiffness against bending; points may ride on bodies
/// and lie on their surfaces.
///
/// Each substep predicts the points, then solves the stretch of all segments at once with compliance, so that a stiff
/// chain neither lags nor rings: sweeping the segments one by one leaves several per cent of stretch. Bodies and
/// friction are part of these equations.
class ChainSolver {
public:
    struct Point {
        hyx::Vec3 position;        ///< metres, world
        hyx::Vec3 velocity;        ///< m/s
        hyx::Real inverseMass = 0; ///< 1/kg, 0 holds the point on its course
        int body = -1;             ///< in `bodies`, of a point that rides on one, with `velocity` relative to it
    };

    /// A body as it goes on without the chain.
    struct Body {
        hyx::Vec3 center; ///< of mass; metres, world
        hyx::Vec3 velocity;
        hyx::Vec3 spin;
        hyx::Vec3 acceleration;
        hyx::Vec3 angularAcceleration;
        int column = -1;    ///< in `mobility`, of a body that the chain can move
        hyx::Vec3 shifted;  ///< metres since the start of the step
        hyx::Vec3 turned;   ///< radians since the start of the step
        hyx::Vec3 impulse;  ///< out: of the chain in the last step, N s
        hyx::Vec3 momentum; ///< out: likewise about the centre of mass, N m s

        hyx::Vec3 velocityAt(hyx::Vec3 const& place) const { return velocity + spin.cross(place - center); }

        /// From where a place of the body is now to where it was at the start of the step.
        hyx::Vec3 atStart(hyx::Vec3 const& place) const;
        hyx::Vec3 directionNow(hyx::Vec3 const& directionAtStart) const;
    };

    /// Of a point with the surface of a body. As a wire does, a point gives along the surface by a small way before it
    /// slides, so that friction grows steadily and does not jump between points.
    struct Contact {
        enum State { NONE, GRIPS, SLIDES };

        State state = NONE;
        int body = -1;
        hyx::Vec3 normal;
        hyx::Real gap = 0;  ///< metres, where the point would be without pull
        hyx::Vec3 strain;   ///< of that small way, at most one; friction is as great a part of its most
        hyx::Real load = 0; ///< newtons, in the last substep
    };

    /// Finds the surface nearest to a place where a point would be; fills body, normal and gap.
    using Finder = std::function<bool(std::size_t point, hyx::Vec3 const& place, Contact& contact)>;

    std::vector<Point> points;
    std::vector<Body> bodies;
    /// Of the bodies that the chain can move, six by six: shift by impulse.
    std::vector<hyx::Real> mobility;
    /// One for each point; of use where there is a finder.
    std::vector<Contact> contacts;
    Finder findContact;
    hyx::Real friction = 0;
    hyx::Real grip = 1e-4;              ///< metres along a surface before a point slides
    std::vector<hyx::Real> restLengths; ///< metres, one fewer than points
    std::vector<hyx::Real> tensions;    ///< out: newtons, mean over the last step
    hyx::Real axialStiffness = 1e6;     ///< newtons for a strain of 1
    hyx::Real bendStiffness = 0;        ///< N m2
    bool tensionOnly = true;            ///< segments buckle instead of pushing
    hyx::Real damping = 0;              ///< part of the velocity lost in a second

    template <class Bytes>
    void exchangeState(Bytes& bytes) {
        bytes(points, contacts, friction, grip, restLengths, tensions, axialStiffness, bendStiffness, tensionOnly,
              damping);
    }

    /// Advances by `timeStep` seconds in `substeps` parts under `gravity` in m/s2. Held points move with their own
    /// velocity. All rest lengths grow by the factor `growth`, a part in each substep: at once it would be a blow.
    void step(hyx::Real timeStep, hyx::UInt substeps, hyx::Vec3 const& gravity, hyx::Real growth = 1);
    /// Length of the chain in metres as it hangs.
    hyx::Real length() const;
    /// Curvature (1/m) at an inner point.
    hyx::Real curvature(std::size_t point) const;

private:
    hyx::Vec3 velocityOf(std::size_t i) const;
    void resistBending(hyx::Real h);
    void moveBodies(hyx::Real h);
    void solveStretch(hyx::Real h);
    void touch(hyx::Real h);
    void layRows();
    void solveRows(hyx::Real h);
    void finish(hyx::Real h);
    // Contacts of points with surfaces.
    void findContacts(hyx::Real h);
    ChainNode nodeOf(std::size_t i, hyx::Real h) const;
    bool reviseContacts(hyx::Real h);
    bool revise(std::size_t i, hyx::Real h);
    hyx::Vec3 slipOf(std::size_t i, hyx::Vec3 const& place, hyx::Real h) const;
    hyx::Real frictionAt(std::size_t i) const;
    void settleContacts(hyx::Real h);

    ChainSystem m_system;
    std::vector<char> m_slack;
    std::vector<hyx::Real> m_pulls;  ///< newtons, of the segments in the last substep
    std::vector<hyx::Vec3> m_before; ///< places at the start of a substep
    std::vector<hyx::Vec3> m_free;   ///< places that nothing would hinder
    std::vector<int> m_changes;      ///< of each contact in a substep
};

} // namespace hyxWire
