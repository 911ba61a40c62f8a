// One round of contacts: what a step spends most of its time on.
#include "reference/machinery/dynamics/contact_solver.h"
#include "reference/machinery/dynamics/lanes.h"

#include <algorithm>
#include <cmath>

namespace hyx {

HYX_INLINED double ContactSolver::speedAt(Patch const& patch, Point const& point) {
    Lanes const parts = lanes(patch.normal) * (lanes(patch.first->velocity) - lanes(patch.second->velocity)) +
                        lanes(point.cross[0]) * lanes(patch.first->spin) -
                        lanes(point.cross[1]) * lanes(patch.second->spin);
    return parts[0] + parts[1] + parts[2];
}

HYX_INLINED void ContactSolver::pushAt(Patch const& patch, Point const& point, double impulse) {
    lanes(patch.first->velocity) += lanes(patch.normal) * (impulse * patch.first->inverseMass);
    lanes(patch.first->spin) += lanes(point.response[0]) * impulse;
    lanes(patch.second->velocity) -= lanes(patch.normal) * (impulse * patch.second->inverseMass);
    lanes(patch.second->spin) -= lanes(point.response[1]) * impulse;
}

HYX_INLINED void ContactSolver::rubAt(Patch& patch, double lateral0, double lateral1, double torsion) {
    Lanes const push = lanes(patch.tangents[0]) * lateral0 + lanes(patch.tangents[1]) * lateral1;
    lanes(patch.first->velocity) += push * patch.first->inverseMass;
    lanes(patch.second->velocity) -= push * patch.second->inverseMass;
    lanes(patch.first->spin) += lanes(patch.lateralResponse[0][0]) * lateral0 +
                                lanes(patch.lateralResponse[1][0]) * lateral1 +
                                lanes(patch.torsionResponse[0]) * torsion;
    lanes(patch.second->spin) -= lanes(patch.lateralResponse[0][1]) * lateral0 +
                                 lanes(patch.lateralResponse[1][1]) * lateral1 +
                                 lanes(patch.torsionResponse[1]) * torsion;
}

/// Of the patch's centre, along a tangent.
HYX_INLINED double ContactSolver::slidingAt(Patch const& patch, int tangent) {
    Lanes const parts =
        lanes(patch.tangents[tangent]) * (lanes(patch.first->velocity) - lanes(patch.second->velocity)) +
        lanes(patch.lateralCross[tangent][0]) * lanes(patch.first->spin) -
        lanes(patch.lateralCross[tangent][1]) * lanes(patch.second->spin);
    return parts[0] + parts[1] + parts[2];
}

double ContactSolver::speedOf(Patch const& patch, Point const& point) const {
    return speedAt(patch, point);
}

/// The last half's forces are the first guess.
HYX_WIDE_LANES void ContactSolver::applyHalves() {
    for (Patch& patch : m_patches) {
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            Point& point = m_points[i];
            point.impulse += point.half;
            pushAt(patch, point, point.half);
        }
        patch.now.lateral[0] += patch.half.lateral[0];
        patch.now.lateral[1] += patch.half.lateral[1];
        patch.now.torsion += patch.half.torsion;
        rubAt(patch, patch.half.lateral[0], patch.half.lateral[1], patch.half.torsion);
    }
}

HYX_WIDE_LANES double ContactSolver::sweep() {
    double greatest = 0;
    for (Patch& patch : m_patches) {
        greatest = std::max(greatest, sweepPoints(patch));
        if (patch.friction > 0)
            sweepFriction(patch);
        if (patch.rolling > 0)
            sweepRolling(patch);
    }
    return greatest;
}

HYX_INLINED double ContactSolver::sweepPoints(Patch& patch) {
    double greatest = 0;
    patch.load = 0;
    for (int i = patch.start; i < patch.start + patch.count; ++i) {
        Point& point = m_points[i];
        double const wanted = point.target - speedAt(patch, point) - point.softness * (point.impulse - point.base);
        double const former = point.impulse;
        point.impulse = std::max(former + wanted * point.share, 0.0);
        patch.load += point.impulse;
        double const change = point.impulse - former;
        if (change == 0)
            continue;
        pushAt(patch, point, change);
        greatest = std::max(greatest, std::abs(change) * point.stiffness);
    }
    return greatest;
}

/// Sliding and turning share the friction that there is, which is against both as they are: a patch that is easier to
/// push one way than the other does not turn aside.
HYX_INLINED ContactSolver::Friction ContactSolver::slipping(Patch const& patch, double sliding0, double sliding1,
                                                            double most) {
    Friction const& now = patch.now;
    Friction next{{now.lateral[0] - patch.slipMass * sliding0, now.lateral[1] - patch.slipMass * sliding1}, 0};
    double square = next.lateral[0] * next.lateral[0] + next.lateral[1] * next.lateral[1];
    if (patch.reach > 0) {
        double const turning = dot(patch.normal, patch.first->spin) - dot(patch.normal, patch.second->spin);
        double const part = now.torsion / patch.reach - patch.slipMass * turning * patch.reach;
        next.torsion = part * patch.reach;
        square += part * part;
    }
    if (square > most * most) {
        double const scale = most / std::sqrt(square);
        next = {{next.lateral[0] * scale, next.lateral[1] * scale}, next.torsion * scale};
    }
    return next;
}

HYX_INLINED void ContactSolver::sweepFriction(Patch& patch) {
    double const most = patch.friction * patch.load;
    Friction const& now = patch.now;
    if (most <= 0 && now.lateral[0] == 0 && now.lateral[1] == 0 && now.torsion == 0)
        return;
    Friction next;
    if (most > 0) {
        double const s0 = slidingAt(patch, 0);
        double const s1 = slidingAt(patch, 1);
        next.lateral[0] = now.lateral[0] - patch.lateralInverse[0][0] * s0 - patch.lateralInverse[0][1] * s1;
        next.lateral[1] = now.lateral[1] - patch.lateralInverse[1][0] * s0 - patch.lateralInverse[1][1] * s1;
        double square = (next.lateral[0] * next.lateral[0] + next.lateral[1] * next.lateral[1]) / (most * most);
        if (patch.reach > 0) {
            double const turning = dot(patch.normal, patch.first->spin) - dot(patch.normal, patch.second->spin);
            next.torsion = now.torsion - patch.torsionMass * turning;
            double const part = next.torsion / (most * patch.reach);
            square += part * part;
        }
        if (patch.shear > 0) {
            double const part = mobilized(patch, next, s0, s1, most);
            next = {{next.lateral[0] * part, next.lateral[1] * part}, next.torsion * part};
            square *= part * part;
        }
        if (square > 1)
            next = slipping(patch, s0, s1, most);
    }
    rubAt(patch, next.lateral[0] - now.lateral[0], next.lateral[1] - now.lateral[1], next.torsion - now.torsion);
    patch.now = next;
}

void ContactSolver::sweepRolling(Patch& patch) {
    btVector3 const rolling = patch.first->spin - patch.second->spin;
    double next[2];
    for (int k : {0, 1})
        next[k] = patch.roll[k] - patch.rollingMass[k] * patch.tangents[k].dot(rolling);
    double const size = std::hypot(next[0], next[1]);
    double const scale = size > patch.rolling * patch.load ? patch.rolling * patch.load / size : 1;
    for (int k : {0, 1})
        roll(patch, k, next[k] * scale - patch.roll[k]);
}

void ContactSolver::roll(Patch& patch, int tangent, double change) {
    patch.first->spin += patch.rollingResponse[tangent][0] * change;
    patch.second->spin -= patch.rollingResponse[tangent][1] * change;
    patch.roll[tangent] += change;
}

HYX_WIDE_LANES void ContactSolver::goOnwards() {
    auto next = m_onwards.begin();
    for (Patch& patch : m_patches) {
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            m_points[i].impulse += *next;
            pushAt(patch, m_points[i], *next++);
        }
        for (int k : {0, 1})
            patch.now.lateral[k] += next[k];
        patch.now.torsion += next[2];
        rubAt(patch, next[0], next[1], next[2]);
        next += 3;
        for (int k : {0, 1})
            roll(patch, k, *next++);
    }
}

} // namespace hyx
