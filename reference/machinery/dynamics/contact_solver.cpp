// What contact points aim at, and the rounds that bring them there.
#include "reference/machinery/dynamics/contact_solver.h"

#include <BulletCollision/NarrowPhaseCollision/btManifoldPoint.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyx {

namespace {

/// m/s; slower contacts come to rest.
constexpr double leastBounce = 0.3;
/// Overlap is taken back like a spring of this frequency (Hz), damped many times over, and no faster than this (m/s).
constexpr double contactDamping = 10;
constexpr double fastestPush = 3;
/// Of the radius; heavier loads are carried by what carried them last.
constexpr double greatestSag = 0.012;
constexpr double fastest = 1e30;
constexpr int mostHalvings = 30;

} // namespace

void ContactSolver::aimAtPlaces(double substep) {
    m_bounces = false;
    m_numHeavy = 0;
    for (Patch& patch : m_patches) {
        patch.now = {};
        patch.roll[0] = patch.roll[1] = 0;
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            Point& point = m_points[i];
            point.impulse = point.base = 0;
            point.bounces = point.restitution > 0 && aimBounce(patch, point, substep);
            if (!point.bounces)
                aimPoint(patch, point, substep);
            else
                point.half = 0;
            m_bounces = m_bounces || point.bounces;
            point.share = 1 / (point.stiffness + point.softness);
        }
    }
    applyHalves();
}

void ContactSolver::aimPoint(Patch const& patch, Point& point, double substep) {
    if (point.springStiffness > 0) {
        double const resistance = substep * point.springStiffness + point.springDamping;
        point.softness = 2 / (substep * resistance);
        point.target = -point.gap * point.springStiffness / resistance;
        return;
    }
    double const left = point.gap + point.slop;
    if (patch.linked && left < 0) {
        point.softness = point.target = point.half = 0;
        return;
    }
    double const turn = 2 * std::numbers::pi * 0.125 / substep;
    double const slowness = 2 * contactDamping + substep * turn;
    double const softness = point.stiffness / (substep * turn * slowness);
    double const sag = 2 * point.half * point.stiffness / (substep * turn * turn);
    double const most = greatestSag * patch.size;
    bool const heavy = sag > most;
    m_numHeavy += heavy;
    point.softness = heavy ? softness * most / sag : left < 0 ? softness : 0;
    point.target = left < 0 ? std::min(-left * turn / slowness, fastestPush) : -left / substep;
}

/// Follows the free flight to the moment of impact, which lies behind where the surfaces overlap already, and back from
/// there: so the height of a bounce depends neither on the step nor on its phase.
bool ContactSolver::aimBounce(Patch const& patch, Point& point, double substep) {
    // The first half of the substep's forces has acted already.
    double const pull = patch.normal.dot(patch.first->acceleration - patch.second->acceleration);
    double const speed = speedOf(patch, point) - pull * substep / 2;
    if (speed >= 0 && pull >= 0)
        return false;
    double const end = point.gap + speed * substep + pull * substep * substep / 2;
    double const square = speed * speed - 2 * pull * point.gap;
    if (end >= 0 || square < leastBounce * leastBounce)
        return false;
    double const impact = -std::sqrt(square);
    double const time = std::abs(pull) > 1e-9 ? (impact - speed) / pull : -point.gap / speed;
    if (std::abs(time) > m_step)
        return false;
    double const left = substep - time;
    double const away = -point.restitution * impact;
    double const gap = std::max(away * left + pull * left * left / 2, 0.0);
    point.softness = 0;
    point.target = (gap - point.gap) / substep;
    point.bounceSpeed = away + pull * left;
    return true;
}

void ContactSolver::aimAtSpeeds(double substep) {
    for (Patch& patch : m_patches) {
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            Point& point = m_points[i];
            double const regularity = m_numHeavy > 0 ? point.softness : 0;
            point.softness = 0;
            point.base = point.impulse;
            if (point.bounces) {
                point.target = point.bounceSpeed;
            } else if (point.springStiffness > 0) {
                double const damping = std::max(point.springDamping, 0.05 * point.springStiffness * m_step);
                point.softness = 2 / (substep * damping);
                point.target = -point.gap * point.springStiffness / damping;
            } else {
                // What has not met the surface in this substep may go on.
                point.target = point.gap > 0 && point.impulse == 0 ? -fastest : 0;
                // Rounds end soon when the loads are to stay near those of the last substep.
                point.softness = regularity;
                point.base = point.impulse + point.half;
            }
            point.share = 1 / (point.stiffness + point.softness);
        }
    }
    applyHalves();
}

/// Janosi and Hanamoto's law: shear by j brings 1 - exp(-j / K) of the greatest friction. Under a patch it rises evenly
/// from its front to its back, where it is `a` times K, so that the whole has 1 - (1 - exp(-a)) / a. Returns the part
/// of the friction that would hold the patch which leaves just the slip for this part.
double ContactSolver::mobilized(Patch const& patch, Friction const& holding, double sliding0, double sliding1,
                                double most) {
    double const(&inverse)[2][2] = patch.lateralInverse;
    double const determinant = inverse[0][0] * inverse[1][1] - inverse[0][1] * inverse[1][0];
    double const x = patch.now.lateral[0], y = patch.now.lateral[1];
    double const free0 = sliding0 - (inverse[1][1] * x - inverse[0][1] * y) / determinant;
    double const free1 = sliding1 - (inverse[0][0] * y - inverse[1][0] * x) / determinant;
    double const slip = std::hypot(free0, free1);
    double const needed = std::hypot(holding.lateral[0], holding.lateral[1]) / most;
    double lower = 0, upper = 1;
    for (int i = 0; i < mostHalvings; ++i) {
        double const part = (lower + upper) / 2;
        double const a = patch.shear * slip * (1 - part);
        double const brought = a > 1e-6 ? 1 + std::expm1(-a) / a : a / 2;
        (part * needed < brought ? lower : upper) = part;
    }
    return lower;
}

void ContactSolver::advance(double substep) {
    for (Patch const& patch : m_patches)
        for (int i = patch.start; i < patch.start + patch.count; ++i)
            m_points[i].gap += speedOf(patch, m_points[i]) * substep;
}

void ContactSolver::finishSubstep() {
    for (Patch& patch : m_patches) {
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            Point& point = m_points[i];
            point.sum += point.impulse;
            point.half = point.bounces ? 0 : point.impulse / 2;
        }
        for (int k : {0, 1}) {
            patch.sum.lateral[k] += patch.now.lateral[k];
            patch.half.lateral[k] = patch.now.lateral[k] / 2;
        }
        patch.sum.torsion += patch.now.torsion;
        patch.half.torsion = patch.now.torsion / 2;
    }
}

void ContactSolver::finish() {
    for (Patch const& patch : m_patches) {
        double load = 0;
        for (int i = patch.start; i < patch.start + patch.count; ++i)
            load += m_points[i].sum;
        for (int i = patch.start; i < patch.start + patch.count; ++i) {
            btManifoldPoint& source = *m_points[i].source;
            // The points share the patch's friction by their loads.
            double const share = load > 0 ? m_points[i].sum / load : 0;
            source.m_appliedImpulse = m_points[i].sum;
            source.m_lateralFrictionDir1 = patch.tangents[0];
            source.m_lateralFrictionDir2 = patch.tangents[1];
            source.m_appliedImpulseLateral1 = patch.sum.lateral[0] * share;
            source.m_appliedImpulseLateral2 = patch.sum.lateral[1] * share;
            source.m_prevRHS = patch.sum.torsion * share;
        }
    }
}

} // namespace hyx
