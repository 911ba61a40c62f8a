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
    /// Between two grains, or one and an obstacle.
    struct Contact {
        std::uint32_t first;
        /// A grain, or an obstacle and the number of the surface found on it.
        std::uint32_t second;
        /// Towards the first grain.
        Vec3 normal;
        /// m/s, of the obstacle's surface.
        Vec3 surface;
        /// Between the surfaces at the start of the substep, metres.
        Real gap;
        Real targetSpeed;
        /// Of both grains together: kg.
        Real mass;
        Real impulse = 0;
        Vec3 rubbing;
    };

    /// What is kept of a contact for the next substep, by place of the grains.
    struct Former {
        std::uint32_t first;
        std::uint32_t second;
        Real impulse;
        Vec3 rubbing;
    };

    void followRemovals(std::vector<Particle> const& grains);
    void findPairs(std::vector<Particle> const& grains, Real h);
    void findTouches(std::vector<Particle> const& grains, Obstacles const& obstacles, Real h);
    void start(std::vector<Contact>& contacts, std::vector<Former> const& former, bool pairs);
    void apply(Contact const& contact, bool pair, Vec3 const& impulse);
    template <bool pairs>
    void sweep(std::vector<Contact>& contacts, bool backwards);
    template <bool pair>
    void solve(Contact& contact);
    void move(std::vector<Particle>& grains, Real h);
    bool partPairs(std::vector<Particle>& grains);
    bool leaveObstacles(std::vector<Particle>& grains, Real h);
    static void keep(std::vector<Contact> const& contacts, std::vector<Former>& former);

    Real m_friction = 0;
    Real m_pairFriction = 0;
    Real m_substep = 1;
    /// The square of the largest change of speed in a round.
    Real m_change = 0;
    NeighbourGrid m_grid;
    std::vector<Index> m_ids;
    std::vector<Vec3> m_starts;
    std::vector<Vec3> m_predicted;
    std::vector<Vec3> m_velocities;
    std::vector<Real> m_inverseMasses;
    std::vector<Contact> m_pairs;
    std::vector<Contact> m_touches;
    std::vector<Former> m_formerPairs;
    std::vector<Former> m_formerTouches;
    std::vector<std::uint32_t> m_begin;
    std::vector<ParticleObstacle::Surface> m_surfaces;
};

} // namespace hyx
