// The joint rows of a mechanism as one system.
#include "reference/machinery/bullet/mechanism.h"

#include "platform/hyx/bodies/rigid_body.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace hyx {

namespace {

/// Rounds of letting go and taking up rows; after half of them rows are only let go, which ends.
constexpr int mostRounds = 30;
constexpr int mostCorrections = 8;
/// Metres or radians.
constexpr double exactPlace = 1e-11;
/// What rows may miss their places by, where corrections make it no better.
constexpr double openPlace = 1e-6;
constexpr double exactSpeed = 1e-9;
/// m/s or rad/s; a bounded row that lacks more is at its bound.
constexpr double heldSpeed = 1e-3;

} // namespace

Mechanism::Mechanism(std::vector<Constraint::Implementation*> joints) : m_joints(std::move(joints)) {
    std::set<std::pair<int, int>> pairs;
    for (std::size_t i = 0; i < m_joints.size(); ++i)
        for (std::size_t j = i + 1; j < m_joints.size(); ++j)
            for (auto const& one : m_joints[i]->bodies)
                for (auto const& other : m_joints[j]->bodies)
                    if (one && one == other && one->getMotionControl() == RigidBody::DYNAMICS)
                        pairs.emplace(i, j);
    m_pairs.assign(pairs.begin(), pairs.end());
    m_matrix.setStructure(static_cast<int>(m_joints.size()), m_pairs);
}

void Mechanism::begin() {
    m_bodies.clear();
    for (Constraint::Implementation const* joint : m_joints)
        for (MovingBody* body : joint->moving)
            if (body->bullet && std::find(m_bodies.begin(), m_bodies.end(), body) == m_bodies.end())
                m_bodies.push_back(body);
}

double Mechanism::greatestSpin() const {
    double greatest = 0;
    for (MovingBody const* body : m_bodies)
        greatest = std::max(greatest, body->spin.length());
    for (Constraint::Implementation const* joint : m_joints)
        for (auto const& direction : joint->free)
            if (direction.kind == Constraint::Implementation::ABOUT_Z && direction.motor->isEnabled())
                greatest = std::max(greatest, std::abs(direction.motor->getTargetSpeed()));
    return greatest;
}

bool Mechanism::swings() const {
    return std::any_of(m_joints.begin(), m_joints.end(), [](auto const* joint) { return joint->swings(); });
}

void Mechanism::loosen() {
    for (MovingBody* body : m_bodies)
        if (body->leastMoment > 0)
            body->stiffen(0);
}

void Mechanism::aimAtPlaces(double substep, double step) {
    for (Constraint::Implementation* joint : m_joints)
        joint->aimAtPlaces(substep, step);
    collectRows();
}

void Mechanism::aimAtSpeeds(double substep, double step) {
    for (Constraint::Implementation* joint : m_joints)
        joint->aimAtSpeeds(substep, step);
    collectRows();
}

void Mechanism::finishHalf() {
    for (Constraint::Implementation* joint : m_joints)
        joint->finishHalf();
}

void Mechanism::collectRows() {
    m_rows.clear();
    m_sizes.clear();
    m_firstRows.clear();
    for (Constraint::Implementation* joint : m_joints) {
        m_firstRows.push_back(static_cast<int>(m_rows.size()));
        for (ConstraintRow* row : joint->allRows)
            if (row->working) {
                startRow(*row, *joint);
                m_rows.push_back({row, joint});
            }
        m_sizes.push_back(static_cast<int>(m_rows.size()) - m_firstRows.back());
    }
    m_outdated = true;
}

void Mechanism::startRow(ConstraintRow& row, Constraint::Implementation const& joint) {
    row.impulse = 0;
    row.hold = ConstraintRow::FREE;
    // A bound that pushes one way only is left alone until it is needed.
    double const wanted = lack(row, joint);
    if (row.lowerImpulse == 0 && wanted < 0)
        row.hold = ConstraintRow::LOWER;
    else if (row.upperImpulse == 0 && wanted > 0)
        row.hold = ConstraintRow::UPPER;
}

/// A great pull on a light body makes it swing faster than a substep can follow, which would gain energy. Such a body
/// gets as much inertia as makes it slow enough; no other body is changed.
bool Mechanism::stiffen(double substep) {
    bool found = false;
    for (MovingBody* body : m_bodies) {
        if (!body->isFree())
            continue;
        double stiffness = 0;
        for (Constraint::Implementation const* joint : m_joints)
            for (int i : {0, 1}) {
                if (joint->moving[i] != body)
                    continue;
                btVector3 pull(0, 0, 0);
                double arm = 0;
                for (ConstraintRow const* row : joint->allRows)
                    if (row->working && row->type == Constraint::TRANSLATIONAL) {
                        pull += row->axis * row->impulse;
                        arm = (row->anchors[i] - body->position).length();
                    }
                stiffness += pull.length() * arm * 2 / substep;
            }
        double const moment = stiffness * substep * substep;
        if (moment > body->moments[body->moments.minAxis()]) {
            body->stiffen(moment);
            found = true;
        }
    }
    return found;
}

/// Goes back to the velocities that the forces gave, by the inertia that the bodies have now.
void Mechanism::startAgain(double substep) {
    for (std::size_t i = 0; i < m_bodies.size(); ++i) {
        MovingBody& body = *m_bodies[i];
        body.velocity = m_saved[i].velocity;
        body.spin = m_saved[i].spin;
        if (body.leastMoment != m_saved[i].leastMoment)
            body.spin += (body.inverseInertia - m_saved[i].inverseInertia) * body.torque * (substep / 2);
    }
}

void Mechanism::solvePlaces(double substep) {
    m_saved.clear();
    for (MovingBody const* body : m_bodies)
        m_saved.push_back(*body);
    solve();
    if (!stiffen(substep))
        return;
    startAgain(substep);
    for (auto const& [row, joint] : m_rows) {
        joint->respond(*row);
        startRow(*row, *joint);
    }
    m_outdated = true;
    solve();
}

double Mechanism::speedOf(ConstraintRow const& row, Constraint::Implementation const& joint) const {
    MovingBody const& first = *joint.moving[0];
    MovingBody const& second = *joint.moving[1];
    return row.linear.dot(first.velocity - second.velocity) + row.angular[0].dot(first.spin) -
           row.angular[1].dot(second.spin);
}

double Mechanism::lack(ConstraintRow const& row, Constraint::Implementation const& joint) const {
    return row.targetSpeed - speedOf(row, joint) - row.softness * row.impulse;
}

void Mechanism::apply(ConstraintRow& row, Constraint::Implementation const& joint, double impulse) {
    row.impulse += impulse;
    for (int i : {0, 1}) {
        MovingBody& body = *joint.moving[i];
        double const signedImpulse = i == 0 ? impulse : -impulse;
        body.velocity += row.linear * (signedImpulse * body.inverseMass);
        body.spin += row.response[i] * signedImpulse;
    }
}

/// The share of two joints' rows in each other's speed, by the bodies that they have in common.
void Mechanism::couple(int first, int second, BlockMatrix::Coupling const& coupling) {
    Constraint::Implementation const& one = *m_joints[first];
    Constraint::Implementation const& other = *m_joints[second];
    for (int i : {0, 1})
        for (int j : {0, 1}) {
            MovingBody const& body = *one.moving[i];
            if (one.moving[i] != other.moving[j] || !body.isFree())
                continue;
            double const sign = i == j ? 1 : -1;
            for (int r = 0; r < m_sizes[first]; ++r) {
                ConstraintRow const& row = *m_rows[m_firstRows[first] + r].row;
                if (row.hold != ConstraintRow::FREE)
                    continue;
                btVector3 const linear = row.linear * (sign * row.scale * body.inverseMass);
                btVector3 const angular = row.response[i] * (sign * row.scale);
                for (int s = 0; s < m_sizes[second]; ++s) {
                    ConstraintRow const& column = *m_rows[m_firstRows[second] + s].row;
                    if (column.hold == ConstraintRow::FREE)
                        coupling.at(r, s) +=
                            column.scale * (linear.dot(column.linear) + angular.dot(column.angular[j]));
                }
            }
        }
}

void Mechanism::factor() {
    m_matrix.reset(m_sizes);
    for (auto const& [row, joint] : m_rows) {
        double const diagonal = row->softness + row->mobility;
        row->scale = diagonal > 0 ? 1 / std::sqrt(diagonal) : 0;
    }
    for (std::size_t j = 0; j < m_joints.size(); ++j) {
        int const block = static_cast<int>(j);
        int const size = m_sizes[j];
        if (size == 0)
            continue;
        couple(block, block, {&m_matrix.diagonal(block, 0, 0), size, false});
        for (int r = 0; r < size; ++r) {
            ConstraintRow const& row = *m_rows[m_firstRows[j] + r].row;
            m_matrix.diagonal(block, r, r) = row.hold == ConstraintRow::FREE
                                                 ? m_matrix.diagonal(block, r, r) + row.softness * row.scale * row.scale
                                                 : 1;
        }
    }
    for (std::size_t p = 0; p < m_pairs.size(); ++p)
        couple(m_pairs[p].first, m_pairs[p].second, m_matrix.coupling(static_cast<int>(p)));
    m_matrix.factor();
    m_outdated = false;
}

bool Mechanism::push() {
    m_matrix.solve(m_values);
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].row->hold == ConstraintRow::FREE)
            apply(*m_rows[i].row, *m_rows[i].joint, m_values[i] * m_rows[i].row->scale);
    return keepBounds();
}

bool Mechanism::keepBounds() {
    bool met = false;
    for (auto const& [row, joint] : m_rows) {
        if (row->hold != ConstraintRow::FREE ||
            (row->impulse >= row->lowerImpulse && row->impulse <= row->upperImpulse))
            continue;
        row->hold = row->impulse < row->lowerImpulse ? ConstraintRow::LOWER : ConstraintRow::UPPER;
        double const bound = row->hold == ConstraintRow::LOWER ? row->lowerImpulse : row->upperImpulse;
        apply(*row, *joint, bound - row->impulse);
        met = true;
    }
    return met;
}

bool Mechanism::letGo() {
    bool found = false;
    for (auto const& [row, joint] : m_rows) {
        if (row->hold == ConstraintRow::FREE)
            continue;
        double const wanted = lack(*row, *joint);
        if (row->hold == ConstraintRow::LOWER ? wanted > exactSpeed : wanted < -exactSpeed) {
            row->hold = ConstraintRow::FREE;
            found = true;
        }
    }
    return found;
}

void Mechanism::solve() {
    for (int round = 0; round < mostRounds; ++round) {
        if (m_outdated)
            factor();
        m_values.resize(m_rows.size());
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            auto const& [row, joint] = m_rows[i];
            m_values[i] = row->hold == ConstraintRow::FREE ? lack(*row, *joint) * row->scale : 0;
        }
        bool changed = push();
        if (!changed && round < mostRounds / 2)
            changed = letGo();
        m_outdated = m_outdated || changed;
        if (!changed)
            return;
    }
}

void Mechanism::holdAsNow() {
    for (auto const& [row, joint] : m_rows) {
        bool const bounded = std::isfinite(row->lowerImpulse) || std::isfinite(row->upperImpulse);
        if (bounded && std::abs(lack(*row, *joint)) > heldSpeed)
            row->hold = ConstraintRow::LOWER;
    }
    factor();
}

void Mechanism::letFollow() {
    m_values.resize(m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        auto const& [row, joint] = m_rows[i];
        m_values[i] = row->hold == ConstraintRow::FREE ? -speedOf(*row, *joint) * row->scale : 0;
    }
    m_matrix.solve(m_values);
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].row->hold == ConstraintRow::FREE)
            apply(*m_rows[i].row, *m_rows[i].joint, m_values[i] * m_rows[i].row->scale);
}

/// Joints that no places satisfy, such as a chain that is too short, would be paid with ever greater speeds: then the
/// bodies keep those that they had, and the joints stay open.
void Mechanism::correctPlaces(double substep) {
    m_before.clear();
    for (MovingBody const* body : m_bodies)
        m_before.push_back(*body);
    m_impulses.clear();
    for (Row const& each : m_rows)
        m_impulses.push_back(each.row->impulse);
    double const first = missPlaces(substep);
    double left = first;
    double former = SIMD_INFINITY;
    for (int round = 0; round < mostCorrections && left >= exactPlace && left <= 2 * former; ++round) {
        former = left;
        m_outdated = push() || m_outdated;
        left = missPlaces(substep);
    }
    if (left < openPlace || left < first / 10)
        return;
    for (std::size_t i = 0; i < m_bodies.size(); ++i)
        *m_bodies[i] = m_before[i];
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i].row->impulse = m_impulses[i];
}

/// By how much the rows will miss their places at the end of the substep, at most; readies the pushes against it.
double Mechanism::missPlaces(double substep) {
    m_saved.clear();
    for (MovingBody* body : m_bodies) {
        m_saved.push_back(*body);
        body->drift(substep);
    }
    for (Constraint::Implementation* joint : m_joints)
        joint->measure(substep);
    for (std::size_t i = 0; i < m_bodies.size(); ++i)
        *m_bodies[i] = m_saved[i];
    if (m_outdated)
        factor();
    double greatest = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        auto const& [row, joint] = m_rows[i];
        m_values[i] = 0;
        if (row->hold != ConstraintRow::FREE)
            continue;
        if (row->softness > 0) {
            m_values[i] = lack(*row, *joint) * row->scale;
            continue;
        }
        double const left = row->startValue + row->targetSpeed * substep - row->value;
        greatest = std::max(greatest, std::abs(left));
        m_values[i] = left / substep * row->scale;
    }
    return greatest;
}

} // namespace hyx
