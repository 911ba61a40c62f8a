// The course of a step of grains.
#include "reference/hyx/particles/grain_solver.h"

#include "reference/hyx/particles/body_obstacle.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/dynamics/lanes.h"
#include "reference/machinery/files/state_bytes.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace hyx {

namespace {

constexpr int numSubsteps = 2;
constexpr int numSweeps = 6;
/// m/s, of a round that needs no other.
constexpr Real leastChange = 2e-4;
constexpr int mostPartings = 4;
/// Overlap in radii that rests.
constexpr Real toleratedOverlap = 0.01;
/// Grains whose surfaces come this near, in radii, may touch.
constexpr Real reach = 0.2;

/// A heap of balls that do not roll stands steeper than they slide: the friction between two balls, and of balls on
/// surfaces, by which heaps stand at the angle of a friction, as measured on heaps of 1500 balls. Flat heaps slide
/// apart on their ground.
constexpr struct {
    Real given, ofPairs, ofSurfaces;
} calibrated[] = {{0, 0, 0},          {0.15, 0, 0.15},  {0.2, 0, 0.165},   {0.25, 0, 0.185}, {0.3, 0.012, 0.3},
                  {0.35, 0.03, 0.33}, {0.4, 0.07, 0.4}, {0.6, 0.155, 0.6}, {0.8, 0.25, 0.8}, {1, 0.305, 1}};

btVector3 toBullet(Vec3 const& vector, Real fourth) {
    btVector3 result = toBullet(vector);
    result.setW(fourth);
    return result;
}

} // namespace

void GrainSolver::clear() {
    m_ids.clear();
    m_formerPairs.clear();
    m_formerTouches.clear();
    m_pairs.clear();
    m_touches.clear();
}

void GrainSolver::step(std::vector<Particle>& grains, Obstacles const& obstacles, Vec3 const& gravity, Real friction,
                       Real timeStep) {
    setFriction(friction);
    m_substep = timeStep / numSubsteps;
    followRemovals(grains);
    for (int k = 0; k < numSubsteps; ++k) {
        predict(grains, gravity);
        findPairs();
        findTouches(grains, obstacles);
        start(m_pairs, m_formerPairs);
        start(m_touches, m_formerTouches);
        m_change = 1;
        for (int i = 0; i < numSweeps && m_change > leastChange * leastChange; ++i) {
            m_change = 0;
            sweep(m_pairs, m_pairFriction, i % 2);
            sweep(m_touches, m_friction, i % 2);
        }
        move(grains);
        push(obstacles, timeStep);
        keep(m_pairs, m_formerPairs);
        keep(m_touches, m_formerTouches);
    }
}

void GrainSolver::predict(std::vector<Particle> const& grains, Vec3 const& gravity) {
    m_moving.clear();
    m_starts.clear();
    m_predicted.clear();
    for (Particle const& grain : grains) {
        Vec3 const velocity = grain.velocity + gravity * m_substep;
        m_moving.push_back(toBullet(velocity, 1 / grain.mass));
        m_starts.push_back(toBullet(grain.position, grain.radius));
        m_predicted.push_back(toBullet(grain.position + velocity * m_substep, grain.radius));
    }
}

void GrainSolver::setFriction(Real friction) {
    std::size_t i = 1;
    while (i + 1 < std::size(calibrated) && calibrated[i].given < friction)
        ++i;
    auto const& low = calibrated[i - 1];
    auto const& high = calibrated[i];
    // Beyond the last the line goes on.
    Real const part = (friction - low.given) / (high.given - low.given);
    m_pairFriction = std::lerp(low.ofPairs, high.ofPairs, part);
    m_friction = std::lerp(low.ofSurfaces, high.ofSurfaces, part);
}

/// Places change when grains go; those that stay keep their order.
void GrainSolver::followRemovals(std::vector<Particle> const& grains) {
    bool same = m_ids.size() <= grains.size();
    for (std::size_t i = 0; i < m_ids.size() && same; ++i)
        same = m_ids[i] == grains[i].id;
    std::vector<Index> ids;
    for (Particle const& grain : grains)
        ids.push_back(grain.id);
    if (!same) {
        constexpr std::uint32_t gone = ~0u;
        std::vector<std::uint32_t> places;
        for (Index const id : m_ids) {
            auto const found = std::lower_bound(ids.begin(), ids.end(), id);
            bool const stays = found != ids.end() && *found == id;
            places.push_back(stays ? static_cast<std::uint32_t>(found - ids.begin()) : gone);
        }
        for (Former& former : m_formerPairs) {
            former.first = places[former.first];
            former.second = places[former.second];
        }
        for (Former& former : m_formerTouches)
            former.first = places[former.first];
        std::erase_if(m_formerPairs, [](Former const& f) { return f.first == gone || f.second == gone; });
        std::erase_if(m_formerTouches, [](Former const& f) { return f.first == gone; });
    }
    m_ids.swap(ids);
}

HYX_WIDE_LANES void GrainSolver::findPairs() {
    m_grid.findPairs(m_predicted, reach, m_near);
    m_pairs.resize(m_near.size());
    for (std::size_t i = 0; i < m_near.size(); ++i) {
        Contact& contact = m_pairs[i];
        btVector3 const& first = m_starts[contact.first = m_near[i].first];
        btVector3 const& second = m_starts[contact.second = m_near[i].second];
        Lanes apart = lanes(first) - lanes(second);
        apart[3] = 0;
        Real const distance = std::sqrt(dot(apart, apart));
        // Grains in one and the same place are parted upwards.
        lanes(contact.normal) = distance > 0 ? apart / distance : Lanes{0, 0, 1, 0};
        lanes(contact.rubbing) = Lanes{};
        contact.targetSpeed = -std::max(distance - first.w() - second.w(), 0.0) / m_substep;
        contact.mass = 1 / (m_moving[contact.first].w() + m_moving[contact.second].w());
        contact.impulse = 0;
    }
}

void GrainSolver::findTouches(std::vector<Particle> const& grains, Obstacles const& obstacles) {
    m_touches.clear();
    m_surfaces.clear();
    for (std::size_t o = 0; o < obstacles.size(); ++o) {
        auto* body = dynamic_cast<BodyObstacle*>(obstacles[o].get());
        if (body)
            body->prepare();
        for (std::size_t i = 0; i < grains.size(); ++i) {
            Real const near = grains[i].radius * (1 + reach) + fromBullet(m_moving[i]).length() * m_substep;
            m_found.clear();
            ParticleObstacle::Surface found;
            if (body)
                body->findAll(grains[i].position, near, m_found);
            else if (obstacles[o]->find(grains[i].position, near, found))
                m_found.push_back(found);
            for (std::size_t s = 0; s < m_found.size(); ++s) {
                Real const gap = m_found[s].distance - grains[i].radius;
                m_touches.push_back({toBullet(m_found[s].normal), btVector3(0, 0, 0), static_cast<std::uint32_t>(i),
                                     static_cast<std::uint32_t>(m_moving.size()), -std::max(gap, 0.0) / m_substep,
                                     grains[i].mass, 0});
                m_moving.push_back(toBullet(m_found[s].velocity));
                m_surfaces.push_back({static_cast<std::uint32_t>(o << 16 | s), gap});
            }
        }
    }
}

/// What stays the same from one substep to the next.
std::uint32_t GrainSolver::keyOf(Contact const& contact) const {
    return contact.second < m_starts.size() ? contact.second : m_surfaces[contact.second - m_starts.size()].key;
}

/// Where the contacts of each first grain begin.
void GrainSolver::countFirsts(std::vector<Former> const& former) {
    m_begin.assign(m_starts.size() + 1, 0);
    for (Former const& one : former)
        ++m_begin[one.first + 1];
    for (std::size_t i = 0; i + 1 < m_begin.size(); ++i)
        m_begin[i + 1] += m_begin[i];
}

/// Each contact finds its former self among those of its first grain.
void GrainSolver::start(std::vector<Contact>& contacts, std::vector<Former> const& former) {
    countFirsts(former);
    for (Contact& contact : contacts) {
        std::uint32_t const key = keyOf(contact);
        for (std::uint32_t k = m_begin[contact.first]; k < m_begin[contact.first + 1]; ++k)
            if (former[k].second == key) {
                Vec3 const normal = fromBullet(contact.normal);
                Vec3 const rubbing = former[k].rubbing - normal * former[k].rubbing.dot(normal);
                contact.impulse = former[k].impulse;
                contact.rubbing = toBullet(rubbing);
                apply(contact, contact.normal * contact.impulse + contact.rubbing);
            }
    }
}

void GrainSolver::keep(std::vector<Contact> const& contacts, std::vector<Former>& former) {
    m_unsorted.clear();
    for (Contact const& contact : contacts)
        if (contact.impulse > 0)
            m_unsorted.push_back({contact.first, keyOf(contact), contact.impulse, fromBullet(contact.rubbing)});
    countFirsts(m_unsorted);
    former.resize(m_unsorted.size());
    for (Former const& one : m_unsorted)
        former[m_begin[one.first]++] = one;
}

HYX_WIDE_LANES void GrainSolver::sweep(std::vector<Contact>& contacts, Real friction, bool backwards) {
    if (backwards)
        for (auto contact = contacts.rbegin(); contact != contacts.rend(); ++contact)
            solve(*contact, friction);
    else
        for (Contact& contact : contacts)
            solve(contact, friction);
}

HYX_INLINED void GrainSolver::solve(Contact& contact, Real friction) {
    Lanes const& normal = lanes(contact.normal);
    Lanes speed = lanes(m_moving[contact.first]) - lanes(m_moving[contact.second]);
    speed[3] = 0;
    Real const along = dot(speed, normal);
    Real const impulse = std::max(contact.impulse + (contact.targetSpeed - along) * contact.mass, 0.0);
    if (impulse == 0 && contact.impulse == 0)
        return;
    Lanes rubbing = lanes(contact.rubbing) - (speed - normal * along) * contact.mass;
    Real const most = friction * impulse;
    if (Real const size2 = dot(rubbing, rubbing); size2 > most * most)
        rubbing *= most / std::sqrt(size2);
    btVector3 change;
    lanes(change) = normal * (impulse - contact.impulse) + rubbing - lanes(contact.rubbing);
    apply(contact, change);
    m_change = std::max(m_change, dot(change, change) / (contact.mass * contact.mass));
    contact.impulse = impulse;
    lanes(contact.rubbing) = rubbing;
}

HYX_INLINED void GrainSolver::apply(Contact const& contact, btVector3 const& impulse) {
    btVector3& first = m_moving[contact.first];
    btVector3& second = m_moving[contact.second];
    lanes(first) += lanes(impulse) * first.w();
    lanes(second) -= lanes(impulse) * second.w();
}

/// The bodies feel what their surfaces gave.
void GrainSolver::push(Obstacles const& obstacles, Real timeStep) {
    for (std::size_t i = 0; i < m_touches.size(); ++i) {
        Contact const& touch = m_touches[i];
        if (auto* body = dynamic_cast<BodyObstacle*>(obstacles[m_surfaces[i].key >> 16].get());
            body && touch.impulse > 0) {
            btVector3 const& place = m_places[touch.first];
            body->push(fromBullet(touch.normal * -touch.impulse - touch.rubbing),
                       fromBullet(place - touch.normal * place.w()), timeStep);
        }
    }
}

void GrainSolver::move(std::vector<Particle>& grains) {
    m_places.clear();
    for (std::size_t i = 0; i < grains.size(); ++i) {
        grains[i].velocity = fromBullet(m_moving[i]);
        m_places.push_back(toBullet(grains[i].position + grains[i].velocity * m_substep, grains[i].radius));
    }
    for (Contact const& touch : m_touches)
        if (touch.impulse > 0) {
            Particle& grain = grains[touch.first];
            Vec3 const speed = grain.velocity - fromBullet(m_moving[touch.second]);
            Vec3 const turn = fromBullet(touch.normal).cross(speed) * (m_substep / grain.radius);
            if (Real const angle = turn.length(); angle > 0)
                grain.rotation = (grain.rotation * Quat(angle, turn)).normal();
        }
    bool apart = false;
    for (int round = 0; round < mostPartings && !apart; ++round) {
        bool const parted = partPairs();
        bool const left = leaveObstacles();
        apart = !parted && !left;
    }
    for (std::size_t i = 0; i < grains.size(); ++i)
        grains[i].position = fromBullet(m_places[i]);
}

/// Overlaps are parted without giving speed. Whether there were any.
HYX_WIDE_LANES bool GrainSolver::partPairs() {
    bool parted = false;
    for (std::size_t i = 0; i < m_near.size(); ++i) {
        btVector3& first = m_places[m_near[i].first];
        btVector3& second = m_places[m_near[i].second];
        Lanes apart = lanes(first) - lanes(second);
        apart[3] = 0;
        Real const touching = first.w() + second.w() - toleratedOverlap * std::min(first.w(), second.w());
        Real const square = dot(apart, apart);
        if (square >= touching * touching)
            continue;
        parted = true;
        Contact const& pair = m_pairs[i];
        Real const distance = std::sqrt(square);
        Lanes const shift =
            (distance > 0 ? apart / distance : lanes(pair.normal)) * ((touching - distance) * pair.mass);
        lanes(first) += shift * m_moving[pair.first].w();
        lanes(second) -= shift * m_moving[pair.second].w();
    }
    return parted;
}

bool GrainSolver::leaveObstacles() {
    bool left = false;
    for (std::size_t i = 0; i < m_touches.size(); ++i) {
        Contact const& touch = m_touches[i];
        btVector3& place = m_places[touch.first];
        // The surface goes on evenly, and is taken as flat.
        btVector3 const way = place - m_starts[touch.first] - m_moving[touch.second] * m_substep;
        Real const deep = -(m_surfaces[i].gap + dot(way, touch.normal)) - toleratedOverlap * place.w();
        if (deep <= 0)
            continue;
        left = true;
        lanes(place) += lanes(touch.normal) * deep;
    }
    return left;
}

void GrainSolver::tellContacts(std::vector<Particle> const& grains, std::vector<ParticleContact>& contacts) const {
    contacts.clear();
    for (Contact const& pair : m_pairs)
        if (pair.impulse > 0)
            contacts.push_back({pair.first, pair.second,
                                grains[pair.second].position + fromBullet(pair.normal) * grains[pair.second].radius,
                                fromBullet(pair.normal), pair.impulse / m_substep});
    for (Contact const& touch : m_touches)
        if (touch.impulse > 0)
            contacts.push_back({touch.first, ParticleContact::surroundings,
                                grains[touch.first].position - fromBullet(touch.normal) * grains[touch.first].radius,
                                fromBullet(touch.normal), touch.impulse / m_substep});
}

void GrainSolver::exchangeState(StateBytes& bytes) {
    bytes(m_ids, m_formerPairs, m_formerTouches, m_pairs, m_touches, m_substep);
}

} // namespace hyx
