// The way of a wire or cable over bodies and off winches.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/objects/referenced.h"
#include "reference/hyxWire/chain_solver.h"

#include <vector>

namespace hyxWire {

/// Where a chain goes: fixed and free places and points of bodies, and the exchange of motion and force with those
/// bodies.
///
/// For the time of a step the chain moves the bodies as their joints let them, contacts apart. The impulse that it
/// gives them goes to them as a force and a torque, so that a stiff chain and a light body do not drive each other
/// apart.
class ChainRoute {
public:
    /// Throws std::invalid_argument for a place that is not finite.
    void add(hyx::Vec3 const& point);
    /// Throws std::invalid_argument for null.
    void add(hyx::RigidBody* body, hyx::Vec3 const& localPoint);

    /// Lays points along the route, with segments of about `segmentLength` metres and `massPerLength` kg/m.
    /// Throws std::runtime_error for a route of fewer than two different places.
    void build(ChainSolver& chain, hyx::Real segmentLength, hyx::Real massPerLength);
    /// Tells the chain of the bodies of its route, and of further ones that it may touch; those that stand in no
    /// simulation fall by `gravity`. Lets attached points and the ends travel to their places within the next
    /// `timeStep` seconds.
    void takePlaces(ChainSolver& chain, std::vector<hyx::RigidBody*> const& touched, hyx::Vec3 const& gravity,
                    hyx::Real timeStep);
    /// Gives the bodies what the chain did in its last step.
    void pullBodies(ChainSolver const& chain, hyx::Real timeStep) const;
    /// Its number in the chain's bodies.
    int numberOf(hyx::RigidBody const* body) const;

    /// Whether a point of the chain is one of the route's places on bodies.
    bool isAttached(std::size_t point) const;
    /// Moves the first or last place, unless it rides on a body.
    void moveEnd(bool first, hyx::Vec3 const& point);

    template <class Bytes>
    void exchangeState(Bytes& bytes) {
        bytes.expect(m_places.size(), "places on a route");
        for (Place& place : m_places)
            bytes(place.point, place.index);
    }

    /// The body at the first or last place, null for a fixed one.
    hyx::RigidBody* getEndBody(bool first) const;

private:
    struct Place {
        hyx::Vec3 point; ///< world, or in the frame of the body
        hyx::ref_ptr<hyx::RigidBody> body;
        std::size_t index = 0; ///< of the chain's point

        bool isEnd(ChainSolver const& chain) const { return index == 0 || index + 1 == chain.points.size(); }

        hyx::Vec3 getWorldPoint() const { return body ? body->getTransform().transformPoint(point) : point; }
    };

    void takeBodies(ChainSolver& chain, hyx::Vec3 const& gravity, hyx::Real timeStep) const;

    std::vector<Place> m_places;
    /// During a step, in the order of the chain's bodies.
    std::vector<hyx::RigidBody*> m_bodies;
};

} // namespace hyxWire
