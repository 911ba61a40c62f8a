// Cables: chains with bending and torsion whose load is known piece by piece.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <memory>
#include <vector>

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxCable {

/// The elastic constants of a cable.
struct CableProperties {
    hyx::Real youngModulus = 1e9; ///< Pa, along the cable and in bending
    hyx::Real shearModulus = 4e8; ///< Pa, in twist
    hyx::Real density = 1500;     ///< kg/m3
    hyx::Real damping = 1;        ///< part of the velocity lost in a second
};

/// How one segment is loaded.
struct SegmentLoad {
    hyx::Real tension = 0;   ///< newtons
    hyx::Real curvature = 0; ///< 1/m
    hyx::Real twist = 0;     ///< radians per metre
};

/// A cable with stiffness against stretch, bending and twist.
/// Its ends are hinged in space or on bodies: a body's turn about the cable twists it evenly along its length.
class Cable : public hyx::Process {
public:
    /// A cable of `radius` metres with about `segmentsPerMetre` segments. Throws `std::invalid_argument` unless both
    /// are above 0.
    Cable(hyx::Real radius, hyx::Real segmentsPerMetre, CableProperties const& properties = CableProperties());

    /// Continues the route to a point in metres, world: the first and last are fixed, those between free.
    void add(hyx::Vec3 const& point);
    /// Continues the route to a point of a body, in metres in its frame. Throws `std::invalid_argument` for null.
    void add(hyx::RigidBody* body, hyx::Vec3 const& localPoint);
    /// Makes the points now; `step` does it otherwise. Throws `std::runtime_error` for a route of fewer than two
    /// different points.
    void initialize();

    /// Metres.
    hyx::Real getRadius() const;
    /// How stiff the cable is, and how heavy.
    CableProperties const& getProperties() const;
    /// Gravity in m/s2 while this is in no simulation, standard gravity along -Z at first; in a simulation, that one's
    /// gravity acts. Throws `std::invalid_argument` when not finite.
    void setGravity(hyx::Vec3 const& gravity);
    /// What acts now, m/s2: the simulation's gravity, or the own one in none.
    hyx::Vec3 getGravity() const;
    /// Lets a fixed end (`first` or the last) travel to a point in metres, world, within the next step; no effect on an
    /// end that rides on a body.
    void setEndPoint(bool first, hyx::Vec3 const& point);
    /// Turns the first end about the cable's axis, in radians against the last end, on top of what the bodies do.
    void setEndTwist(hyx::Real angle);
    hyx::Real getEndTwist() const;

    /// How many straight pieces stand for the cable.
    hyx::UInt getNumSegments() const;
    /// The ends of the pieces in the world, metres.
    std::vector<hyx::Vec3> const& getPoints() const;
    /// The load of each segment. Throws `std::out_of_range` past the end.
    SegmentLoad getLoad(hyx::Index segment) const;
    /// At the moment, metres.
    hyx::Real getLength() const;
    /// Rises with every step.
    hyx::UInt getRevision() const;

    /// Advances the cable by `timeStep` seconds. Throws `std::invalid_argument` unless it is above 0.
    void step(hyx::Real timeStep);

    void preStep(hyx::TimeStamp time, hyx::Real timeStep) override;

protected:
    ~Cable() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxCable
