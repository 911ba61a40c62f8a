// The course of a step of grains.
#include "reference/hyx/particles/grain_solver.h"

#include "reference/hyx/particles/body_obstacle.h"
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

/// A heap of balls that do not roll stands steeper than they slide: the friction between two balls (second) by which
/// heaps stand at the angle of a friction (first), as measured on heaps of 1500 balls.
constexpr Real frictionOfPairs[][2] = {{0, 0}, {0.3, 0.012}, {0.4, 0.07}, {0.6, 0.155}, {0.8, 0.25}, {1, 0.305}};

Real frictionOfPair(Real friction) {
    std::size_t i = 1;
    while (i + 1 < std::size(frictionOfPairs) && frictionOfPairs[i][0] < friction)
        ++i;
    auto const& [x0, y0] = frictionOfPairs[i - 1];
    auto const& [x1, y1] = frictionOfPairs[i];
    return y0 + (y1 - y0) * (friction - x0) / (x1 - x0);
}

bool isBefore(std::uint32_t first, std::uint32_t second, std::uint32_t otherFirst, std::uint32_t otherSecond) {
    return first != otherFirst ? first < otherFirst : second < otherSecond;
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
    m_friction = friction;
    m_pairFriction = frictionOfPair(friction);
    m_substep = timeStep / numSubsteps;
    followRemovals(grains);
    for (int k = 0; k < numSubsteps; ++k) {
        m_velocities.clear();
        m_inverseMasses.clear();
        m_predicted.clear();
        m_starts.clear();
        for (Particle const& grain : grains) {
            m_velocities.push_back(grain.velocity + gravity * m_substep);
            m_inverseMasses.push_back(1 / grain.mass);
            m_starts.push_back(grain.position);
            m_predicted.push_back(grain.position + m_velocities.back() * m_substep);
        }
        findPairs(grains, m_substep);
        findTouches(grains, obstacles, m_substep);
        start(m_pairs, m_formerPairs, true);
        start(m_touches, m_formerTouches, false);
        m_change = 1;
        for (int i = 0; i < numSweeps && m_change > leastChange * leastChange; ++i) {
            m_change = 0;
            sweep<true>(m_pairs, i % 2);
            sweep<false>(m_touches, i % 2);
        }
        move(grains, m_substep);
        for (Contact const& touch : m_touches)
            if (auto* body = dynamic_cast<BodyObstacle*>(obstacles[touch.second >> 16].get());
                body && touch.impulse > 0)
                body->push((touch.normal * touch.impulse + touch.rubbing) * -1.0,
                           grains[touch.first].position - touch.normal * grains[touch.first].radius, timeStep);
        keep(m_pairs, m_formerPairs);
        keep(m_touches, m_formerTouches);
    }
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

void GrainSolver::findPairs(std::vector<Particle> const& grains, Real h) {
    m_pairs.clear();
    Real largest = 0;
    for (Particle const& grain : grains)
        largest = std::max(largest, grain.radius);
    if (largest == 0)
        return;
    m_grid.build(m_predicted, (2 + reach) * largest);
    m_grid.forEachPair([&](std::size_t i, std::size_t j) {
        Real const touching = grains[i].radius + grains[j].radius;
        Real const near = touching + reach * std::min(grains[i].radius, grains[j].radius);
        if ((m_predicted[i] - m_predicted[j]).length2() > near * near)
            return;
        Vec3 const apart = grains[i].position - grains[j].position;
        Real const distance = apart.length();
        Contact contact;
        contact.first = static_cast<std::uint32_t>(i);
        contact.second = static_cast<std::uint32_t>(j);
        // Grains in one and the same place are parted upwards.
        contact.normal = distance > 0 ? apart / distance : Vec3(0, 0, 1);
        contact.gap = distance - touching;
        contact.targetSpeed = -std::max(contact.gap, 0.0) / h;
        contact.mass = 1 / (m_inverseMasses[i] + m_inverseMasses[j]);
        m_pairs.push_back(contact);
    });
}

void GrainSolver::findTouches(std::vector<Particle> const& grains, Obstacles const& obstacles, Real h) {
    m_touches.clear();
    for (std::size_t o = 0; o < obstacles.size(); ++o) {
        auto* body = dynamic_cast<BodyObstacle*>(obstacles[o].get());
        if (body)
            body->prepare();
        for (std::size_t i = 0; i < grains.size(); ++i) {
            Real const near = grains[i].radius * (1 + reach) + m_velocities[i].length() * h;
            m_surfaces.clear();
            ParticleObstacle::Surface found;
            if (body)
                body->findAll(grains[i].position, near, m_surfaces);
            else if (obstacles[o]->find(grains[i].position, near, found))
                m_surfaces.push_back(found);
            for (std::size_t s = 0; s < m_surfaces.size(); ++s) {
                Contact touch;
                touch.first = static_cast<std::uint32_t>(i);
                touch.second = static_cast<std::uint32_t>(o << 16 | s);
                touch.normal = m_surfaces[s].normal;
                touch.surface = m_surfaces[s].velocity;
                touch.gap = m_surfaces[s].distance - grains[i].radius;
                touch.targetSpeed = -std::max(touch.gap, 0.0) / h;
                touch.mass = grains[i].mass;
                m_touches.push_back(touch);
            }
        }
    }
}

/// Contacts come in no order of their second side, so each finds its former self among those of its first grain.
void GrainSolver::start(std::vector<Contact>& contacts, std::vector<Former> const& former, bool pairs) {
    m_begin.assign(m_velocities.size() + 1, 0);
    for (Former const& one : former)
        ++m_begin[one.first + 1];
    for (std::size_t i = 0; i + 1 < m_begin.size(); ++i)
        m_begin[i + 1] += m_begin[i];
    for (Contact& contact : contacts)
        for (std::uint32_t k = m_begin[contact.first]; k < m_begin[contact.first + 1]; ++k)
            if (former[k].second == contact.second) {
                contact.impulse = former[k].impulse;
                contact.rubbing = former[k].rubbing - contact.normal * former[k].rubbing.dot(contact.normal);
                apply(contact, pairs, contact.normal * contact.impulse + contact.rubbing);
            }
}

void GrainSolver::keep(std::vector<Contact> const& contacts, std::vector<Former>& former) {
    former.clear();
    for (Contact const& contact : contacts)
        if (contact.impulse > 0)
            former.push_back({contact.first, contact.second, contact.impulse, contact.rubbing});
    std::sort(former.begin(), former.end(),
              [](Former const& a, Former const& b) { return isBefore(a.first, a.second, b.first, b.second); });
}

void GrainSolver::apply(Contact const& contact, bool pair, Vec3 const& impulse) {
    m_velocities[contact.first] += impulse * m_inverseMasses[contact.first];
    if (pair)
        m_velocities[contact.second] -= impulse * m_inverseMasses[contact.second];
}

template <bool pairs>
void GrainSolver::sweep(std::vector<Contact>& contacts, bool backwards) {
    if (backwards)
        for (auto contact = contacts.rbegin(); contact != contacts.rend(); ++contact)
            solve<pairs>(*contact);
    else
        for (Contact& contact : contacts)
            solve<pairs>(contact);
}

template <bool pair>
inline void GrainSolver::solve(Contact& contact) {
    Vec3& first = m_velocities[contact.first];
    Vec3 const speed = first - (pair ? m_velocities[contact.second] : contact.surface);
    Real const along = speed.dot(contact.normal);
    Real const impulse = std::max(contact.impulse + (contact.targetSpeed - along) * contact.mass, 0.0);
    if (impulse == 0 && contact.impulse == 0)
        return;
    Vec3 rubbing = contact.rubbing - (speed - contact.normal * along) * contact.mass;
    Real const most = (pair ? m_pairFriction : m_friction) * impulse;
    if (Real const size2 = rubbing.length2(); size2 > most * most)
        rubbing *= most / std::sqrt(size2);
    Vec3 const change = contact.normal * (impulse - contact.impulse) + rubbing - contact.rubbing;
    first += change * m_inverseMasses[contact.first];
    if (pair)
        m_velocities[contact.second] -= change * m_inverseMasses[contact.second];
    m_change = std::max(m_change, change.length2() / (contact.mass * contact.mass));
    contact.impulse = impulse;
    contact.rubbing = rubbing;
}

void GrainSolver::move(std::vector<Particle>& grains, Real h) {
    for (std::size_t i = 0; i < grains.size(); ++i) {
        grains[i].velocity = m_velocities[i];
        grains[i].position += m_velocities[i] * h;
    }
    for (Contact const& touch : m_touches)
        if (touch.impulse > 0) {
            Particle& grain = grains[touch.first];
            Vec3 const turn = touch.normal.cross(grain.velocity - touch.surface) * (h / grain.radius);
            if (Real const angle = turn.length(); angle > 0)
                grain.rotation = (grain.rotation * Quat(angle, turn)).normal();
        }
    bool apart = false;
    for (int round = 0; round < mostPartings && !apart; ++round) {
        bool const parted = partPairs(grains);
        bool const left = leaveObstacles(grains, h);
        apart = !parted && !left;
    }
}

/// Overlaps are parted without giving speed. Whether there were any.
bool GrainSolver::partPairs(std::vector<Particle>& grains) {
    bool parted = false;
    for (Contact const& pair : m_pairs) {
        Particle& a = grains[pair.first];
        Particle& b = grains[pair.second];
        Vec3 const apart = a.position - b.position;
        Real const touching = a.radius + b.radius - toleratedOverlap * std::min(a.radius, b.radius);
        if (apart.length2() >= touching * touching)
            continue;
        parted = true;
        Real const distance = apart.length();
        Vec3 const shift =
            (distance > 0 ? apart / distance : pair.normal) * ((touching - distance) / (a.mass + b.mass));
        a.position += shift * b.mass;
        b.position -= shift * a.mass;
    }
    return parted;
}

bool GrainSolver::leaveObstacles(std::vector<Particle>& grains, Real h) {
    bool left = false;
    for (Contact const& touch : m_touches) {
        Particle& grain = grains[touch.first];
        // The surface goes on evenly, and is taken as flat.
        Vec3 const way = grain.position - m_starts[touch.first] - touch.surface * h;
        Real const deep = -(touch.gap + way.dot(touch.normal)) - toleratedOverlap * grain.radius;
        if (deep <= 0)
            continue;
        left = true;
        grain.position += touch.normal * deep;
    }
    return left;
}

void GrainSolver::tellContacts(std::vector<Particle> const& grains, std::vector<ParticleContact>& contacts) const {
    contacts.clear();
    for (Contact const& pair : m_pairs)
        if (pair.impulse > 0)
            contacts.push_back({pair.first, pair.second,
                                grains[pair.second].position + pair.normal * grains[pair.second].radius, pair.normal,
                                pair.impulse / m_substep});
    for (Contact const& touch : m_touches)
        if (touch.impulse > 0)
            contacts.push_back({touch.first, ParticleContact::surroundings,
                                grains[touch.first].position - touch.normal * grains[touch.first].radius, touch.normal,
                                touch.impulse / m_substep});
}

void GrainSolver::exchangeState(StateBytes& bytes) {
    bytes(m_ids, m_formerPairs, m_formerTouches, m_pairs, m_touches, m_substep);
}

} // namespace hyx
