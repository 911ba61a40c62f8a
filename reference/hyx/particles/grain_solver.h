// The motion of grains: contacts worked out by rounds that start from the last ones' forces.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "reference/hyx/particles/neighbour_grid.h"

#include <cstdint>
#include <vector>

namespace hyx {

class StateBytes;

/// Dull spheres that slide with dry friction and do not roll. Loads go on from one substep to the next, so that a heap
/// comes to rest and stays.
class GrainSolver {
public:
    using Obstacles = std::vector<ref_ptr<ParticleObstacle>>;

    void step(std::vector<Particle>& grains, Obstacles const& obstacles, Vec3 const& gravity, Real friction,
              Real timeStep);
    /// Those of the last substep.
    void tellContacts(std::vector<Particle> const& grains, std::vector<ParticleContact>& contacts) const;
    void clear();
    void exchangeState(StateBytes& bytes);

private:
    /// Between two of `m_moving`.
    struct Contact {
        /// Towards the first.
        btVector3 normal;
        btVector3 rubbing;
        /// A grain.
        std::uint32_t first;
        /// A grain, or where the surface of a touch is.
        std::uint32_t second;
        Real targetSpeed;
        /// Of both grains together: kg.
        Real mass;
        Real impulse;
    };

    /// What else there is to know of each touch.
    struct Surface {
        /// The obstacle, and the number of the surface found on it.
        std::uint32_t key;
        /// To the grain at the start of the substep, metres.
        Real gap;
    };

    /// What is kept of a contact for the next substep, by place of the grains.
    struct Former {
        std::uint32_t first;
        /// A grain, or the key of a surface.
        std::uint32_t second;
        Real impulse;
        Vec3 rubbing;
    };

    void setFriction(Real friction);
    void followRemovals(std::vector<Particle> const& grains);
    void predict(std::vector<Particle> const& grains, Vec3 const& gravity);
    void findPairs();
    void findTouches(std::vector<Particle> const& grains, Obstacles const& obstacles);
    void start(std::vector<Contact>& contacts, std::vector<Former> const& former);
    std::uint32_t keyOf(Contact const& contact) const;
    void sweep(std::vector<Contact>& contacts, Real friction, bool backwards);
    void solve(Contact& contact, Real friction);
    void apply(Contact const& contact, btVector3 const& impulse);
    void push(Obstacles const& obstacles, Real timeStep);
    void move(std::vector<Particle>& grains);
    bool partPairs();
    bool leaveObstacles();
    void keep(std::vector<Contact> const& contacts, std::vector<Former>& former);
    void countFirsts(std::vector<Former> const& former);

    Real m_friction = 0;
    Real m_pairFriction = 0;
    Real m_substep = 1;
    /// The square of the largest change of speed in a round.
    Real m_change = 0;
    NeighbourGrid m_grid;
    std::vector<Index> m_ids;
    /// The velocities of the grains, then those of the touched surfaces; the fourth part is the inverse mass.
    std::vector<btVector3> m_moving;
    /// Of the grains at the start of a substep, where their velocities lead them, and where they are in its course; the
    /// fourth part is the radius.
    std::vector<btVector3> m_starts;
    std::vector<btVector3> m_predicted;
    std::vector<btVector3> m_places;
    /// The sides of each of `m_pairs`, together in little memory.
    std::vector<NeighbourGrid::Pair> m_near;
    std::vector<Contact> m_pairs;
    std::vector<Contact> m_touches;
    std::vector<Former> m_formerPairs;
    std::vector<Former> m_formerTouches;
    /// Of each of `m_touches`.
    std::vector<Surface> m_surfaces;
    std::vector<std::uint32_t> m_begin;
    std::vector<Former> m_unsorted;
    std::vector<ParticleObstacle::Surface> m_found;
};

} // namespace hyx
