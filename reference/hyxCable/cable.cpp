#include "platform/hyxCable/cable.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxWire/chain_route.h"

#include <algorithm>
#include <numbers>

namespace hyxCable {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr hyx::UInt substeps = 20;

} // namespace

struct Cable::Impl {
    hyxWire::ChainRoute route;
    hyxWire::ChainSolver chain;
    CableProperties properties;
    Real radius;
    Real segmentLength;
    Real endTwist = 0;
    Real bodyTwist = 0; ///< radians that the bodies at the ends have turned the cable against each other
    hyx::UInt revision = 0;
    std::vector<Vec3> positions;

    void publish();
    Real turnRate(bool first) const;
};

Cable::Cable(Real radius, Real segmentsPerMetre, CableProperties const& properties) : m_impl(std::make_unique<Impl>()) {
    hyx::requirePositive(radius, "the radius of a cable");
    hyx::requirePositive(segmentsPerMetre, "the number of segments per metre of a cable");
    hyx::requirePositive(properties.youngModulus, "the Young modulus of a cable");
    hyx::requirePositive(properties.shearModulus, "the shear modulus of a cable");
    hyx::requirePositive(properties.density, "the density of a cable");
    Real const section = std::numbers::pi * radius * radius;
    m_impl->radius = radius;
    m_impl->segmentLength = 1 / segmentsPerMetre;
    m_impl->properties = properties;
    m_impl->chain.axialStiffness = properties.youngModulus * section;
    m_impl->chain.bendStiffness = properties.youngModulus * section * radius * radius / 4;
    m_impl->chain.damping = properties.damping;
    m_impl->chain.tensionOnly = false;
}

Cable::~Cable() = default;

void Cable::add(Vec3 const& point) {
    m_impl->route.add(point);
}

void Cable::add(hyx::RigidBody* body, Vec3 const& localPoint) {
    m_impl->route.add(body, localPoint);
}

void Cable::initialize() {
    if (!m_impl->chain.restLengths.empty())
        return;
    Real const massPerLength = m_impl->properties.density * std::numbers::pi * m_impl->radius * m_impl->radius;
    m_impl->route.build(m_impl->chain, m_impl->segmentLength, massPerLength);
    m_impl->publish();
}

Real Cable::getRadius() const {
    return m_impl->radius;
}

CableProperties const& Cable::getProperties() const {
    return m_impl->properties;
}

void Cable::setGravity(Vec3 const& gravity) {
    m_impl->chain.gravity = gravity;
}

Vec3 Cable::getGravity() const {
    return m_impl->chain.gravity;
}

void Cable::setEndPoint(bool first, Vec3 const& point) {
    m_impl->route.moveEnd(first, point);
}

void Cable::setEndTwist(Real angle) {
    m_impl->endTwist = hyx::requireFinite(angle, "the twist of a cable");
}

Real Cable::getEndTwist() const {
    return m_impl->endTwist;
}

hyx::UInt Cable::getNumSegments() const {
    return m_impl->chain.restLengths.size();
}

std::vector<Vec3> const& Cable::getPoints() const {
    return m_impl->positions;
}

Real Cable::getLength() const {
    return m_impl->chain.length();
}

hyx::UInt Cable::getRevision() const {
    return m_impl->revision;
}

SegmentLoad Cable::getLoad(hyx::Index segment) const {
    hyxWire::ChainSolver const& chain = m_impl->chain;
    SegmentLoad load;
    load.tension = chain.tensions.at(segment);
    // A segment bends as much as the sharper of its two ends.
    for (std::size_t point = segment; point <= segment + 1; ++point)
        if (point > 0 && point + 1 < chain.points.size())
            load.curvature = std::max(load.curvature, chain.curvature(point));
    load.twist = (m_impl->endTwist + m_impl->bodyTwist) / chain.length();
    return load;
}

void Cable::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a cable");
    initialize();
    m_impl->route.takePlaces(m_impl->chain, timeStep);
    m_impl->bodyTwist += (m_impl->turnRate(true) - m_impl->turnRate(false)) * timeStep;
    m_impl->chain.step(timeStep, substeps);
    m_impl->route.pullBodies(m_impl->chain);
    m_impl->publish();
}

void Cable::setSimulation(hyxSDK::Simulation* simulation) {
    Process::setSimulation(simulation);
    if (simulation)
        setGravity(simulation->getGravity());
}

void Cable::preStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

// How fast the body at an end turns about the cable's direction there, rad/s.
Real Cable::Impl::turnRate(bool first) const {
    hyx::RigidBody const* body = route.getEndBody(first);
    if (!body)
        return 0;
    std::size_t const from = first ? 0 : chain.points.size() - 2;
    return body->getAngularVelocity().dot((chain.points[from + 1].position - chain.points[from].position).normal());
}

void Cable::Impl::publish() {
    positions.clear();
    for (hyxWire::ChainSolver::Point const& point : chain.points)
        positions.push_back(point.position);
    ++revision;
}

} // namespace hyxCable
