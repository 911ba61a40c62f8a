// Takes contact points over from the collision search, gathered in patches.
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/islands.h"
#include "reference/machinery/dynamics/contact_solver.h"

#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace hyx {

namespace {

/// Metres; surfaces that rest overlap by this, so that they are found again. Small bodies by this share of their size.
constexpr double usualSlop = 5e-5;
constexpr double slopShare = 1e-3;
/// Points whose normals differ less lie in one plane.
constexpr double sameNormal = 0.999;
/// Metres; on loose ground no patch is shorter, as none presses on less.
constexpr double leastPatch = 0.2;
/// m/s; slower wheels stand.
constexpr double slowestRim = 0.01;

/// The radius of a flat round end that lies in a plane with this normal; 0 where there is none.
double roundEnd(hyxCollide::Geometry const* geometry, btVector3 const& normal) {
    if (!geometry)
        return 0;
    hyxCollide::Shape const& shape = *geometry->getShape();
    bool const cylinder = shape.getType() == hyxCollide::Shape::CYLINDER;
    if (!cylinder && shape.getType() != hyxCollide::Shape::CONE)
        return 0;
    btVector3 const axis = toBullet(geometry->getTransform()).getBasis().getColumn(1);
    if (std::abs(axis.dot(normal)) < sameNormal)
        return 0;
    return cylinder ? static_cast<hyxCollide::Cylinder const&>(shape).getRadius()
                    : static_cast<hyxCollide::Cone const&>(shape).getRadius();
}

/// Grows with the angle of (x, y) about the origin.
double angleOrder(double x, double y) {
    double const size = std::abs(x) + std::abs(y);
    double const part = size > 0 ? y / size : 0;
    return x >= 0 ? part : y >= 0 ? 2 - part : -2 - part;
}

/// The mean distance from its middle of an even pressure over the polygon of these points, which lie in a plane.
double meanDistance(std::span<btVector3> points, btVector3 const& x, btVector3 const& y) {
    if (points.size() < 2)
        return 0;
    if (points.size() == 2)
        return points[0].distance(points[1]) / 4;
    btVector3 middle(0, 0, 0);
    for (btVector3 const& point : points)
        middle += point / static_cast<double>(points.size());
    for (btVector3& point : points) {
        point -= middle;
        point.setW(angleOrder(point.dot(x), point.dot(y)));
    }
    std::sort(points.begin(), points.end(), [](btVector3 const& a, btVector3 const& b) { return a.w() < b.w(); });
    double area = 0;
    double sum = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        btVector3 const& a = points[i];
        btVector3 const& b = points[(i + 1) % points.size()];
        double const part = a.cross(b).length();
        area += part;
        sum += part * (a.length() + 4 * ((a + b) / 2).length() + b.length()) / 6;
    }
    // Points that lie in a line press along it.
    double const span = points.front().distance(points[points.size() / 2]);
    return area > 1e-6 * span * span ? sum / area * 2 / 3 : span / 4;
}

} // namespace

void ContactSolver::begin(std::vector<btPersistentManifold*> const& manifolds, std::vector<MovingBody>& bodies,
                          double step) {
    m_points.clear();
    m_patches.clear();
    m_step = step;
    m_smallestRadius = std::numeric_limits<double>::infinity();
    for (btPersistentManifold* manifold : manifolds) {
        MovingBody& first = movingBody(manifold->getBody0(), bodies);
        MovingBody& second = movingBody(manifold->getBody1(), bodies);
        addManifold(*manifold, first, second, step);
        m_smallestRadius = std::min(m_smallestRadius, manifold->getContactProcessingThreshold());
    }
}

void ContactSolver::setSubstep(double substep) {
    for (Point& point : m_points)
        point.half *= substep / 2;
    for (Patch& patch : m_patches) {
        patch.half.lateral[0] *= substep / 2;
        patch.half.lateral[1] *= substep / 2;
        patch.half.torsion *= substep / 2;
    }
}

void ContactSolver::addManifold(btPersistentManifold& manifold, MovingBody& first, MovingBody& second, double step) {
    double const size = manifold.getContactProcessingThreshold();
    bool taken[MANIFOLD_CACHE_SIZE] = {};
    for (int i = 0; i < manifold.getNumContacts(); ++i) {
        btManifoldPoint const& model = manifold.getContactPoint(i);
        if (taken[i] || (model.m_contactPointFlags & BT_CONTACT_FLAG_HAS_CONTACT_CFM))
            continue;
        Patch patch{};
        patch.first = &first;
        patch.second = &second;
        patch.normal = model.m_normalWorldOnB;
        patch.start = static_cast<int>(m_points.size());
        patch.size = size;
        patch.friction = model.m_combinedFriction;
        patch.rolling = model.m_combinedSpinningFriction;
        for (int j = i; j < manifold.getNumContacts(); ++j) {
            btManifoldPoint& source = manifold.getContactPoint(j);
            if (taken[j] || (source.m_contactPointFlags & BT_CONTACT_FLAG_HAS_CONTACT_CFM) ||
                source.m_normalWorldOnB.dot(patch.normal) < sameNormal || source.m_index0 != model.m_index0 ||
                source.m_index1 != model.m_index1)
                continue;
            taken[j] = true;
            Point point{};
            point.source = &source;
            point.gap = source.getDistance();
            point.restitution = source.m_combinedRestitution;
            point.slop = std::min(usualSlop, slopShare * size);
            if (source.m_contactPointFlags & BT_CONTACT_FLAG_CONTACT_STIFFNESS_DAMPING) {
                point.springStiffness = source.m_combinedContactStiffness1;
                point.springDamping = source.m_combinedContactDamping1;
                point.restitution = 0;
            }
            m_points.push_back(point);
        }
        patch.count = static_cast<int>(m_points.size()) - patch.start;
        finishPatch(patch, manifold, step);
        m_patches.push_back(patch);
    }
}

void ContactSolver::finishPatch(Patch& patch, btPersistentManifold const& manifold, double step) {
    btPlaneSpace1(patch.normal, patch.tangents[0], patch.tangents[1]);
    MovingBody const* const bodies[] = {patch.first, patch.second};
    btVector3 storage[MANIFOLD_CACHE_SIZE];
    std::span<btVector3> const places(storage, patch.count);
    btVector3 middle(0, 0, 0);
    btVector3 pressed(0, 0, 0);
    double load = 0;
    for (int i = patch.start; i < patch.start + patch.count; ++i) {
        Point& point = m_points[i];
        btVector3 const place = (point.source->getPositionWorldOnA() + point.source->getPositionWorldOnB()) * 0.5;
        places[i - patch.start] = place;
        point.stiffness = bodies[0]->inverseMass + bodies[1]->inverseMass;
        for (int k : {0, 1}) {
            point.cross[k] = (place - bodies[k]->position).cross(patch.normal);
            point.response[k] = bodies[k]->inverseInertia * point.cross[k];
            point.stiffness += point.cross[k].dot(point.response[k]);
        }
        point.half = point.source->m_appliedImpulse / step;
        middle += place / patch.count;
        pressed += place * point.source->m_appliedImpulse;
        load += point.source->m_appliedImpulse;
    }
    btVector3 const center = load > 0 ? pressed / load : middle;
    for (int k : {0, 1})
        patch.arms[k] = center - bodies[k]->position;
    hyxCollide::Geometry const* const sides[] = {
        geometryAt(manifold.getBody0(), m_points[patch.start].source->m_index0),
        geometryAt(manifold.getBody1(), m_points[patch.start].source->m_index1)};
    double const radius =
        places.size() < 2 ? 0 : std::max(roundEnd(sides[0], patch.normal), roundEnd(sides[1], patch.normal));
    double const reach = meanDistance(places, patch.tangents[0], patch.tangents[1]);
    patch.reach = radius > 0 && reach > radius / 3 ? radius * 2 / 3 : reach;
    addFriction(patch, step);
    for (int side : {0, 1}) {
        if (!sides[side] || sides[side]->implementation().shearLength <= 0)
            continue;
        patch.friction = std::min(patch.friction, sides[side]->implementation().groundFriction);
        hyxCollide::Geometry const* const other = sides[1 - side];
        if (radius == 0 && other && other->getShape()->getType() != hyxCollide::Shape::BOX)
            addShear(patch, sides[side]->implementation().shearLength, places);
    }
}

/// A wheel lays itself on ground that comes in at the front and goes out at the back at the speed of its rim or of its
/// axle, whichever is more. What lies flat, or hardly moves, has its friction at once.
void ContactSolver::addShear(Patch& patch, double shearLength, std::span<btVector3 const> places) {
    MovingBody const* const bodies[] = {patch.first, patch.second};
    int const moving = bodies[0]->isFree() ? 0 : 1;
    MovingBody const& body = *bodies[moving];
    auto const along = [&](btVector3 const& vector) { return vector - patch.normal * patch.normal.dot(vector); };
    btVector3 const rim = along(body.spin.cross(patch.arms[moving]));
    if (rim.length() < slowestRim)
        return;
    double least = 0, most = 0;
    for (btVector3 const& place : places) {
        double const ahead = (place - places.front()).dot(rim) / rim.length();
        least = std::min(least, ahead);
        most = std::max(most, ahead);
    }
    double const speed = std::max(rim.length(), along(body.velocity).length());
    patch.shear = std::max(most - least, leastPatch) / (speed * shearLength);
}

void ContactSolver::addFriction(Patch& patch, double step) {
    MovingBody const* const bodies[] = {patch.first, patch.second};
    double const inverseMass = bodies[0]->inverseMass + bodies[1]->inverseMass;
    double k[2][2] = {{inverseMass, 0}, {0, inverseMass}};
    double torsion = 0;
    double rolling[2] = {0, 0};
    for (int b : {0, 1}) {
        patch.torsionResponse[b] = bodies[b]->inverseInertia * patch.normal;
        torsion += patch.torsionResponse[b].dot(patch.normal);
        for (int t : {0, 1}) {
            patch.lateralCross[t][b] = patch.arms[b].cross(patch.tangents[t]);
            patch.lateralResponse[t][b] = bodies[b]->inverseInertia * patch.lateralCross[t][b];
            patch.rollingResponse[t][b] = bodies[b]->inverseInertia * patch.tangents[t];
            rolling[t] += patch.rollingResponse[t][b].dot(patch.tangents[t]);
        }
        for (int r : {0, 1})
            for (int c : {0, 1})
                k[r][c] += patch.lateralCross[r][b].dot(patch.lateralResponse[c][b]);
    }
    double const determinant = k[0][0] * k[1][1] - k[0][1] * k[1][0];
    patch.lateralInverse[0][0] = k[1][1] / determinant;
    patch.lateralInverse[1][1] = k[0][0] / determinant;
    patch.lateralInverse[0][1] = patch.lateralInverse[1][0] = -k[0][1] / determinant;
    patch.torsionMass = torsion > 0 ? 1 / torsion : 0;
    double const mean = (patch.lateralInverse[0][0] + patch.lateralInverse[1][1]) / 2;
    patch.slipMass = mean - std::hypot(mean - patch.lateralInverse[0][0], patch.lateralInverse[0][1]);
    if (torsion > 0 && patch.reach > 0)
        patch.slipMass = std::min(patch.slipMass, patch.torsionMass / (patch.reach * patch.reach));
    for (int t : {0, 1})
        patch.rollingMass[t] = rolling[t] > 0 ? 1 / rolling[t] : 0;
    for (int i = patch.start; i < patch.start + patch.count; ++i) {
        btManifoldPoint const& source = *m_points[i].source;
        patch.half.lateral[0] += source.m_appliedImpulseLateral1 / step;
        patch.half.lateral[1] += source.m_appliedImpulseLateral2 / step;
        patch.half.torsion += source.m_prevRHS / step;
    }
}

} // namespace hyx
