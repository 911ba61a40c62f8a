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

} // namespace

void ChainSolver::step(Real timeStep, hyx::UInt substeps, Vec3 const& gravity, Real growth) {
    Real const h = timeStep / substeps;
    Real const kept = std::exp(-damping * h);
    std::size_t const count = points.size();
    tensions.assign(count - 1, 0);
    m_impulse.assign(count, Vec3());
    std::vector<Vec3> before(count);
    Real const partGrowth = std::pow(growth, 1.0 / static_cast<Real>(substeps));
    for (hyx::UInt k = 0; k < substeps; ++k) {
        for (Real& rest : restLengths)
            rest *= partGrowth;
        for (std::size_t i = 0; i < count; ++i) {
            Point& point = points[i];
            before[i] = point.position;
            if (point.inverseMass > 0)
                point.velocity = (point.velocity + gravity * h) * kept;
        }
        if (bendStiffness > 0)
            resistBending(h);
        for (Point& point : points)
            point.position += point.velocity * h;
        solveStretch(h);
        for (std::size_t i = 0; i < count; ++i)
            if (points[i].inverseMass > 0)
                points[i].velocity = (points[i].position - before[i]) / h;
    }
    for (Real& tension : tensions) {
        tension /= static_cast<Real>(substeps);
        if (tensionOnly)
            tension = std::max(tension, 0.0);
    }
    for (std::size_t i = 0; i < count; ++i)
        points[i].force = m_impulse[i] / timeStep;
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
        // A held point is one of a mass so large that its velocity stays.
        Real const mass = points[i].inverseMass > 0 ? 1 / points[i].inverseMass : 1e12;
        diagonal[i] += mass;
        right[i] += points[i].velocity * mass;
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
    m_directions.resize(segments);
    m_stretch.resize(segments);
    m_slack.assign(segments, 0);
    for (std::size_t i = 0; i < segments; ++i) {
        Vec3 const span = points[i + 1].position - points[i].position;
        Real const size = span.length();
        m_directions[i] = size > 0 ? span / size : Vec3(0, 0, 1);
        m_stretch[i] = size - restLengths[i];
    }
    solveRows(h);
    if (tensionOnly) {
        // What would push buckles: a second solve leaves those segments next to no stiffness.
        for (std::size_t i = 0; i < segments; ++i)
            m_slack[i] = m_multiplier[i] < 0;
        solveRows(h);
    }
    for (std::size_t i = 0; i < segments; ++i) {
        Vec3 const push = m_directions[i] * m_multiplier[i];
        points[i].position += push * points[i].inverseMass;
        points[i + 1].position -= push * points[i + 1].inverseMass;
        m_impulse[i] += push / h;
        m_impulse[i + 1] -= push / h;
        tensions[i] += m_multiplier[i] / (h * h);
    }
}

// One solve for the multipliers of all segments.
void ChainSolver::solveRows(Real h) {
    std::size_t const segments = restLengths.size();
    m_diagonal.resize(segments);
    m_upper.assign(segments, 0);
    m_right = m_stretch;
    for (std::size_t i = 0; i < segments; ++i) {
        Real const stiffness = axialStiffness * (m_slack[i] ? slackStiffness : 1);
        m_diagonal[i] = points[i].inverseMass + points[i + 1].inverseMass + restLengths[i] / (stiffness * h * h);
        if (i + 1 < segments)
            m_upper[i] = -points[i + 1].inverseMass * m_directions[i].dot(m_directions[i + 1]);
    }
    for (std::size_t i = 1; i < segments; ++i) {
        Real const factor = m_upper[i - 1] / m_diagonal[i - 1];
        m_diagonal[i] -= factor * m_upper[i - 1];
        m_right[i] -= factor * m_right[i - 1];
    }
    m_multiplier.resize(segments);
    for (std::size_t i = segments; i-- > 0;) {
        Real const next = i + 1 < segments ? m_upper[i] * m_multiplier[i + 1] : 0;
        m_multiplier[i] = (m_right[i] - next) / m_diagonal[i];
    }
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
