// Solves all segments of a chain together, in bands.
#include "reference/hyxWire/chain_solver.h"

#include <algorithm>
#include <cmath>

namespace hyxWire {

using hyx::Real;
using hyx::Vec3;

namespace {

/// Part of the axial stiffness that a segment has against a push.
constexpr Real slackStiffness = 1e-3;
/// In which contacts let go, stick and slide.
constexpr int mostTouchRounds = 12;

} // namespace

void ChainSolver::step(Real timeStep, hyx::UInt substeps, Vec3 const& gravity, Real growth) {
    Real const h = timeStep / substeps;
    Real const kept = std::exp(-damping * h);
    std::size_t const count = points.size();
    m_pulls = tensions;
    m_pulls.resize(count - 1);
    for (Real& pull : m_pulls)
        pull = std::max(pull, 0.0);
    tensions.assign(count - 1, 0);
    contacts.resize(count);
    if (!findContact)
        std::fill(contacts.begin(), contacts.end(), Contact());
    m_before.resize(count);
    m_free.resize(count);
    m_system.mobility = mobility;
    Real const partGrowth = std::pow(growth, 1.0 / static_cast<Real>(substeps));
    for (hyx::UInt k = 0; k < substeps; ++k) {
        for (Real& rest : restLengths)
            rest *= partGrowth;
        for (Point& point : points)
            if (point.inverseMass > 0)
                point.velocity = (point.velocity + gravity * h) * kept;
        moveBodies(h);
        if (bendStiffness > 0)
            resistBending(h);
        for (std::size_t i = 0; i < count; ++i) {
            m_before[i] = points[i].position;
            points[i].position += velocityOf(i) * h;
            m_free[i] = points[i].position;
        }
        solveStretch(h);
        finish(h);
    }
    for (Real& tension : tensions) {
        tension /= static_cast<Real>(substeps);
        if (tensionOnly)
            tension = std::max(tension, 0.0);
    }
}

Vec3 ChainSolver::velocityOf(std::size_t i) const {
    Point const& point = points[i];
    return point.body < 0 ? point.velocity : point.velocity + bodies[point.body].velocityAt(point.position);
}

/// Their velocities go ahead by a substep; their places follow when it ends.
void ChainSolver::moveBodies(Real h) {
    for (Body& body : bodies) {
        body.velocity += body.acceleration * h;
        body.spin += body.angularAcceleration * h;
    }
}

// Implicit step of the bending force -K x with K = (EI / l^3) D'D, where D takes second differences: (M + h^2 K) v1 = M
// v0 - h K x. The matrix has two bands above the diagonal and is the same for all three coordinates.
void ChainSolver::resistBending(Real h) {
    std::size_t const count = points.size();
    std::vector<Real> diagonal(count, 0), first(count, 0), second(count, 0);
    std::vector<Vec3> right(count);
    for (std::size_t i = 1; i + 1 < count; ++i) {
        Real const l = 0.5 * (restLengths[i - 1] + restLengths[i]);
        Real const k = h * bendStiffness / (l * l * l);
        Vec3 const bend = points[i + 1].position - points[i].position * 2.0 + points[i - 1].position;
        right[i - 1] -= bend * k;
        right[i] += bend * (2 * k);
        right[i + 1] -= bend * k;
        Real const stiff = k * h;
        diagonal[i - 1] += stiff;
        diagonal[i] += 4 * stiff;
        diagonal[i + 1] += stiff;
        first[i - 1] -= 2 * stiff;
        first[i] -= 2 * stiff;
        second[i - 1] += stiff;
    }
    for (std::size_t i = 0; i < count; ++i) {
        // A held or riding point is one of a mass so large that its velocity stays.
        Real const mass = points[i].inverseMass > 0 ? 1 / points[i].inverseMass : 1e12;
        diagonal[i] += mass;
        right[i] += velocityOf(i) * mass;
    }
    // Decomposition L D L' in place, forward and back substitution.
    for (std::size_t i = 0; i < count; ++i) {
        Real const a = first[i] / diagonal[i], b = second[i] / diagonal[i];
        if (i + 1 < count) {
            diagonal[i + 1] -= a * first[i];
            first[i + 1] -= a * second[i];
            right[i + 1] -= right[i] * a;
        }
        if (i + 2 < count) {
            diagonal[i + 2] -= b * second[i];
            right[i + 2] -= right[i] * b;
        }
    }
    for (std::size_t i = count; i-- > 0;) {
        Vec3 value = right[i];
        if (i + 1 < count)
            value -= right[i + 1] * first[i];
        if (i + 2 < count)
            value -= right[i + 2] * second[i];
        right[i] = value / diagonal[i];
        if (points[i].inverseMass > 0)
            points[i].velocity = right[i];
    }
}

void ChainSolver::solveStretch(Real h) {
    std::size_t const segments = restLengths.size();
    m_slack.assign(segments, 0);
    if (findContact)
        findContacts(h);
    layRows();
    solveRows(h);
    touch(h);
    if (!tensionOnly)
        return;
    // What would push buckles: a second solve leaves those segments next to no stiffness.
    bool any = false;
    for (std::size_t i = 0; i < segments; ++i)
        if (m_system.tension(i) < 0)
            m_slack[i] = any = true;
    if (!any)
        return;
    solveRows(h);
    touch(h);
}

/// Solves until contacts stay as they are.
void ChainSolver::touch(Real h) {
    m_changes.assign(points.size(), 0);
    for (int round = 0; findContact && round < mostTouchRounds && reviseContacts(h); ++round)
        solveRows(h);
}

void ChainSolver::layRows() {
    m_system.links.resize(restLengths.size());
    for (std::size_t i = 0; i < restLengths.size(); ++i) {
        ChainLink& link = m_system.links[i];
        Vec3 const span = points[i + 1].position - points[i].position;
        Real const size = span.length();
        link.direction = size > 0 ? span / size : Vec3(0, 0, 1);
        link.stretch = size - restLengths[i];
    }
}

void ChainSolver::solveRows(Real h) {
    for (std::size_t i = 0; i < restLengths.size(); ++i) {
        ChainLink& link = m_system.links[i];
        link.stiffness = axialStiffness * (m_slack[i] ? slackStiffness : 1) / restLengths[i] * h * h;
        link.tautness = m_pulls[i] / restLengths[i] * h * h;
    }
    m_system.nodes.resize(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        m_system.nodes[i] = nodeOf(i, h);
    m_system.solve();
}

/// Takes the solution over.
void ChainSolver::finish(Real h) {
    std::vector<Real> forces(m_system.shifts.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        points[i].position += m_system.moves[i];
        if (m_system.nodes[i].column >= 0)
            m_system.addForce(i, &forces[m_system.nodes[i].column]);
    }
    for (std::size_t i = 0; i < tensions.size(); ++i) {
        Real const tension = m_system.tension(i) / (h * h);
        tensions[i] += tension;
        m_pulls[i] = std::max(tension, 0.0);
    }
    for (Body& body : bodies) {
        if (body.column >= 0) {
            Real const* const f = &forces[body.column];
            Real const* const s = &m_system.shifts[body.column];
            body.impulse += Vec3(f[0], f[1], f[2]) / h;
            body.momentum += Vec3(f[3], f[4], f[5]) / h;
            body.velocity += Vec3(s[0], s[1], s[2]) / h;
            body.spin += Vec3(s[3], s[4], s[5]) / h;
        }
    }
    if (findContact)
        settleContacts(h);
    for (Body& body : bodies) {
        body.center += body.velocity * h;
        body.shifted += body.velocity * h;
        body.turned += body.spin * h;
    }
    for (std::size_t i = 0; i < points.size(); ++i)
        if (points[i].inverseMass > 0)
            points[i].velocity = (points[i].position - m_before[i]) / h;
}

Real ChainSolver::length() const {
    Real sum = 0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        sum += (points[i + 1].position - points[i].position).length();
    return sum;
}

Real ChainSolver::curvature(std::size_t point) const {
    Vec3 const before = points[point].position - points[point - 1].position;
    Vec3 const after = points[point + 1].position - points[point].position;
    Real const length = 0.5 * (before.length() + after.length());
    Vec3 const turn = after.normal() - before.normal();
    return length > 0 ? turn.length() / length : 0;
}

} // namespace hyxWire
