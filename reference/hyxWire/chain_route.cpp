// Lays a chain along its route, and moves bodies by its pull.
#include "reference/hyxWire/chain_route.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/body_response.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxWire {

using hyx::Real;
using hyx::Vec3;

namespace {

/// Part of the distance between a body and the chain's point on it that is made up for in a step.
constexpr Real bodyCorrection = 0.2;

bool moves(hyx::RigidBody const& body) {
    return body.getMotionControl() == hyx::RigidBody::DYNAMICS && body.isEnabled();
}

} // namespace

void ChainRoute::add(Vec3 const& point) {
    hyx::requireFinite(point, "a place on a route");
    m_places.push_back({point, nullptr});
}

void ChainRoute::add(hyx::RigidBody* body, Vec3 const& localPoint) {
    if (!body)
        throw std::invalid_argument("a place on a body needs a body");
    hyx::requireFinite(localPoint, "a place on a route");
    m_places.push_back({localPoint, body});
}

void ChainRoute::build(ChainSolver& chain, Real segmentLength, Real massPerLength) {
    chain.points.clear();
    chain.restLengths.clear();
    Vec3 from;
    for (std::size_t p = 0; p < m_places.size(); ++p) {
        Vec3 const to = m_places[p].getWorldPoint();
        if (p == 0) {
            chain.points.push_back({to});
        } else if (Real const span = (to - from).length(); span > 0) {
            auto const pieces = static_cast<std::size_t>(std::max(1.0, std::round(span / segmentLength)));
            for (std::size_t i = 1; i <= pieces; ++i) {
                chain.points.push_back({from + (to - from) * (static_cast<Real>(i) / pieces)});
                chain.restLengths.push_back(span / pieces);
            }
        }
        m_places[p].index = chain.points.size() - 1;
        from = to;
    }
    if (chain.restLengths.empty())
        throw std::runtime_error("a route needs at least two different places: add them before the first step");
    // Half of each segment weighs on each of its points; the ends of the route and the bodies hold their points.
    for (std::size_t i = 0; i < chain.points.size(); ++i) {
        Real const before = i > 0 ? chain.restLengths[i - 1] : 0;
        Real const after = i < chain.restLengths.size() ? chain.restLengths[i] : 0;
        chain.points[i].inverseMass = 2 / ((before + after) * massPerLength);
    }
    chain.points.front().inverseMass = chain.points.back().inverseMass = 0;
    chain.tensions.assign(chain.restLengths.size(), 0);
}

int ChainRoute::numberOf(hyx::RigidBody const* body) const {
    return static_cast<int>(std::find(m_bodies.begin(), m_bodies.end(), body) - m_bodies.begin());
}

bool ChainRoute::isAttached(std::size_t point) const {
    return std::any_of(m_places.begin(), m_places.end(),
                       [point](Place const& place) { return place.body && place.index == point; });
}

void ChainRoute::takeBodies(ChainSolver& chain, Vec3 const& gravity, Real timeStep) const {
    chain.bodies.clear();
    std::vector<hyx::RigidBody*> mobile;
    for (hyx::RigidBody* body : m_bodies) {
        ChainSolver::Body one;
        one.center = body->getWorldCenterOfMass();
        one.velocity = body->getVelocity();
        one.spin = body->getAngularVelocity();
        if (moves(*body)) {
            one.column = 6 * static_cast<int>(mobile.size());
            mobile.push_back(body);
        }
        chain.bodies.push_back(one);
    }
    hyx::BodyResponse const response = hyx::respond(mobile, gravity, timeStep);
    chain.mobility = response.mobility;
    for (ChainSolver::Body& body : chain.bodies)
        if (body.column >= 0) {
            double const* const a = &response.acceleration[body.column];
            body.acceleration = Vec3(a[0], a[1], a[2]);
            body.angularAcceleration = Vec3(a[3], a[4], a[5]);
        }
}

// The chain keeps its own idea of where a body is and makes up for the difference through the velocity. Taking the
// body's place as it is would strain a stiff chain by what the two ways of integrating differ, which is enough to shake
// the body.
void ChainRoute::takePlaces(ChainSolver& chain, std::vector<hyx::RigidBody*> const& touched, Vec3 const& gravity,
                            Real timeStep) {
    m_bodies.clear();
    auto const take = [this](hyx::RigidBody* body) {
        if (std::find(m_bodies.begin(), m_bodies.end(), body) == m_bodies.end())
            m_bodies.push_back(body);
    };
    for (Place const& place : m_places)
        if (place.body && moves(*place.body))
            take(place.body.get());
    std::for_each(touched.begin(), touched.end(), take);
    takeBodies(chain, gravity, timeStep);
    for (Place const& place : m_places) {
        ChainSolver::Point& point = chain.points[place.index];
        Vec3 const target = place.getWorldPoint();
        if (place.body) {
            point.inverseMass = 0;
            point.body = moves(*place.body) ? numberOf(place.body.get()) : -1;
            Vec3 const left = (target - point.position) / timeStep;
            point.velocity = point.body >= 0 ? left * bodyCorrection : left + place.body->getPointVelocity(target);
        } else if (place.isEnd(chain)) {
            // A jump would be a blow that no cable bears.
            point.velocity = (target - point.position) / timeStep;
        }
    }
}

void ChainRoute::pullBodies(ChainSolver const& chain, Real timeStep) const {
    for (std::size_t i = 0; i < m_bodies.size(); ++i) {
        ChainSolver::Body const& body = chain.bodies[i];
        if (body.column < 0)
            continue;
        m_bodies[i]->addForce(body.impulse / timeStep);
        m_bodies[i]->addTorque(body.momentum / timeStep);
    }
}

void ChainRoute::moveEnd(bool first, Vec3 const& point) {
    hyx::requireFinite(point, "a place on a route");
    if (!m_places.empty() && !getEndBody(first))
        (first ? m_places.front() : m_places.back()).point = point;
}

hyx::RigidBody* ChainRoute::getEndBody(bool first) const {
    return m_places.empty() ? nullptr : (first ? m_places.front() : m_places.back()).body.get();
}

} // namespace hyxWire
