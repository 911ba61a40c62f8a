// Wires and ropes under tension, over bodies and off winches.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vector.h"

#include <memory>
#include <vector>

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxWire {

/// A rope or steel wire: points joined by stiff segments that carry tension only, under gravity.
/// A route of attachments is given first; the points between them are made by the first step.
/// The force of the wire acts on the attached bodies.
class Wire : public hyx::Process {
public:
    /// A wire of `radius` metres with about `segmentsPerMetre` segments. Throws `std::invalid_argument` unless both are
    /// above 0.
    Wire(hyx::Real radius, hyx::Real segmentsPerMetre);

    /// Continues the route to a point in metres, world: the first and last are fixed there, those between hang free.
    void add(hyx::Vec3 const& point);
    /// Continues the route to a point of a body, in metres in its frame. Throws `std::invalid_argument` for null.
    void add(hyx::RigidBody* body, hyx::Vec3 const& localPoint);
    /// Lets the wire lie on a body's geometries, run over it as over a pulley, or be wound on it as on a drum; the wire
    /// presses the body and drags it along. Edges of boxes count as rounded off to two segments' length,
    /// so choose segments shorter than half of the radius of a pulley. The wire does not touch itself. Throws
    /// `std::invalid_argument` for null.
    void addObstacle(hyx::RigidBody* body);
    /// Removes such a body; false when it was not there.
    bool removeObstacle(hyx::RigidBody* body);
    /// The coefficient of dry friction on such bodies, 0.2 at first: around a turn of t radians, tensions may differ by
    /// the factor exp(friction * t). Throws `std::invalid_argument` below 0.
    void setFriction(hyx::Real friction);
    hyx::Real getFriction() const;
    /// Makes the points now; `step` does it otherwise. Throws `std::runtime_error` for a route of fewer than two
    /// different points.
    void initialize();
    /// Whether the wire has found its way.
    bool isInitialized() const;

    /// Metres.
    hyx::Real getRadius() const;
    /// Mass in kg of each metre, that of steel at first (7800 kg/m3). Throws `std::invalid_argument` unless above 0.
    void setMassPerLength(hyx::Real mass);
    hyx::Real getMassPerLength() const;
    /// Axial stiffness: force in newtons for a strain of 1, that of a steel rope at first (1e11 Pa times the section).
    void setAxialStiffness(hyx::Real stiffness);
    hyx::Real getAxialStiffness() const;
    /// The part of the points' velocity that is lost in a second, 0.5 at first.
    void setDamping(hyx::Real damping);
    hyx::Real getDamping() const;
    /// Gravity in m/s2 while this is in no simulation, standard gravity along -Z at first; in a simulation, that one's
    /// gravity acts. Throws `std::invalid_argument` when not finite.
    void setGravity(hyx::Vec3 const& gravity);
    /// What acts now, m/s2: the simulation's gravity, or the own one in none.
    hyx::Vec3 getGravity() const;
    /// Steps of the solver for each step of the simulation, 20 at first; long chains need 10 or more. Throws
    /// `std::invalid_argument` unless 1 to 10 000.
    void setNumSubsteps(hyx::UInt count);
    hyx::UInt getNumSubsteps() const;

    /// The speed in m/s at which the winch at the first end pays out (above 0) or hauls in.
    void setWinchSpeed(hyx::Real speed);
    hyx::Real getWinchSpeed() const;
    /// Length in metres without tension.
    hyx::Real getRestLength() const;
    /// Length in metres as it hangs.
    hyx::Real getCurrentLength() const;

    /// How many points stand for the wire.
    hyx::UInt getNumPoints() const;
    /// Position in metres, world, of a point. Throws `std::out_of_range` past the end.
    hyx::Vec3 getPoint(hyx::Index index) const;
    /// All points of the wire.
    std::vector<hyx::Vec3> const& getPoints() const;
    /// Tension in newtons of the segment after point `index`. Throws `std::out_of_range` past the end.
    hyx::Real getTension(hyx::Index segment) const;
    /// Between neighbouring points, newtons.
    std::vector<hyx::Real> const& getTensions() const;
    /// The largest tension in newtons.
    hyx::Real getMaximumTension() const;
    /// Rises with every step.
    hyx::UInt getRevision() const;

    /// Advances the wire by `timeStep` seconds and pulls at the bodies. Throws `std::invalid_argument` unless it is
    /// above 0.
    void step(hyx::Real timeStep);

    void preStep(hyx::TimeStamp time, hyx::Real timeStep) override;

protected:
    ~Wire() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxWire
