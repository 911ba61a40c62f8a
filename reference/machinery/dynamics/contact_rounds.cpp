// Rounds of contacts that go on in the direction of the former ones.
#include "reference/machinery/dynamics/contact_solver.h"

namespace hyx {

namespace {

double orZero(double value) {
    return value > 0 ? 1 / value : 0;
}

} // namespace

template <class Visit>
void ContactSolver::forImpulses(Visit const& visit) {
    for (Patch& patch : m_patches) {
        for (int i = patch.start; i < patch.start + patch.count; ++i)
            visit(m_points[i].impulse, m_points[i].stiffness);
        for (int k : {0, 1})
            visit(patch.now.lateral[k], orZero(patch.lateralInverse[k][k]));
        visit(patch.now.torsion, orZero(patch.torsionMass));
        for (int k : {0, 1})
            visit(patch.roll[k], orZero(patch.rollingMass[k]));
    }
}

void ContactSolver::startRounds() {
    m_onwards.clear();
    m_direction.clear();
    m_squared = 0;
}

/// Conjugate directions down the slope that a round follows find its end in far fewer rounds. They start anew where a
/// round changes more than the one before, as it does where bounds are met.
double ContactSolver::sweepOnwards() {
    if (!m_onwards.empty())
        goOnwards();
    m_change.clear();
    forImpulses([this](double& impulse, double) { m_change.push_back(-impulse); });
    double const greatest = sweep();
    double squared = 0;
    auto next = m_change.begin();
    forImpulses([&](double& impulse, double weight) {
        *next += impulse;
        squared += weight * *next * *next;
        ++next;
    });
    double const part = squared < m_squared ? squared / m_squared : 0;
    m_squared = squared;
    m_direction.resize(m_change.size());
    m_onwards.resize(m_change.size());
    for (std::size_t i = 0; i < m_change.size(); ++i) {
        m_onwards[i] = part * m_direction[i];
        m_direction[i] = m_onwards[i] + m_change[i];
    }
    return greatest;
}

} // namespace hyx
