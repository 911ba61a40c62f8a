// Steps a cable, and tells how each of its segments is loaded.
#include "platform/hyxCable/cable.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/objects/process_gravity.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxWire/chain_route.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <numbers>

namespace hyxCable {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr hyx::UInt substeps = 20;

} // namespace

struct Cable::Implementation {
    hyxWire::ChainRoute route;
    hyxWire::ChainSolver chain;
    hyx::ProcessGravity gravity;
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

Cable::Cable(Real radius, Real segmentsPerMetre, CableProperties const& properties)
    : m_implementation(std::make_unique<Implementation>()) {
    hyx::requirePositive(radius, "the radius of a cable");
    hyx::requirePositive(segmentsPerMetre, "the number of segments per metre of a cable");
    hyx::requirePositive(properties.youngModulus, "the Young modulus of a cable");
    hyx::requirePositive(properties.shearModulus, "the shear modulus of a cable");
    hyx::requirePositive(properties.density, "the density of a cable");
    Real const section = std::numbers::pi * radius * radius;
    m_implementation->radius = radius;
    m_implementation->segmentLength = 1 / segmentsPerMetre;
    m_implementation->properties = properties;
    m_implementation->chain.axialStiffness = properties.youngModulus * section;
    m_implementation->chain.bendStiffness = properties.youngModulus * section * radius * radius / 4;
    m_implementation->chain.damping = properties.damping;
    m_implementation->chain.tensionOnly = false;
    hyx::keepState(this, [this](hyx::StateBytes& bytes) {
        Implementation& self = *m_implementation;
        self.route.exchangeState(bytes);
        self.chain.exchangeState(bytes);
        bytes(self.endTwist, self.bodyTwist, self.revision, self.positions);
    });
}

Cable::~Cable() {
    hyx::forgetState(this);
}

void Cable::add(Vec3 const& point) {
    m_implementation->route.add(point);
}

void Cable::add(hyx::RigidBody* body, Vec3 const& localPoint) {
    m_implementation->route.add(body, localPoint);
}

void Cable::initialize() {
    if (!m_implementation->chain.restLengths.empty())
        return;
    Real const massPerLength =
        m_implementation->properties.density * std::numbers::pi * m_implementation->radius * m_implementation->radius;
    m_implementation->route.build(m_implementation->chain, m_implementation->segmentLength, massPerLength);
    m_implementation->publish();
}

Real Cable::getRadius() const {
    return m_implementation->radius;
}

CableProperties const& Cable::getProperties() const {
    return m_implementation->properties;
}

void Cable::setGravity(Vec3 const& gravity) {
    m_implementation->gravity.setOwn(gravity);
}

Vec3 Cable::getGravity() const {
    return m_implementation->gravity.of(*this);
}

void Cable::setEndPoint(bool first, Vec3 const& point) {
    m_implementation->route.moveEnd(first, point);
}

void Cable::setEndTwist(Real angle) {
    m_implementation->endTwist = hyx::requireFinite(angle, "the twist of a cable");
}

Real Cable::getEndTwist() const {
    return m_implementation->endTwist;
}

hyx::UInt Cable::getNumSegments() const {
    return m_implementation->chain.restLengths.size();
}

std::vector<Vec3> const& Cable::getPoints() const {
    return m_implementation->positions;
}

Real Cable::getLength() const {
    return m_implementation->chain.length();
}

hyx::UInt Cable::getRevision() const {
    return m_implementation->revision;
}

SegmentLoad Cable::getLoad(hyx::Index segment) const {
    hyxWire::ChainSolver const& chain = m_implementation->chain;
    SegmentLoad load;
    load.tension = chain.tensions.at(segment);
    // A segment bends as much as the sharper of its two ends.
    for (std::size_t point = segment; point <= segment + 1; ++point)
        if (point > 0 && point + 1 < chain.points.size())
            load.curvature = std::max(load.curvature, chain.curvature(point));
    load.twist = (m_implementation->endTwist + m_implementation->bodyTwist) / chain.length();
    return load;
}

void Cable::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a cable");
    initialize();
    m_implementation->route.takePlaces(m_implementation->chain, {}, getGravity(), timeStep);
    m_implementation->bodyTwist += (m_implementation->turnRate(true) - m_implementation->turnRate(false)) * timeStep;
    m_implementation->chain.step(timeStep, substeps, getGravity());
    m_implementation->route.pullBodies(m_implementation->chain, timeStep);
    m_implementation->publish();
}

void Cable::preStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

// How fast the body at an end turns about the cable's direction there, rad/s.
Real Cable::Implementation::turnRate(bool first) const {
    hyx::RigidBody const* body = route.getEndBody(first);
    if (!body)
        return 0;
    std::size_t const from = first ? 0 : chain.points.size() - 2;
    return body->getAngularVelocity().dot((chain.points[from + 1].position - chain.points[from].position).normal());
}

void Cable::Implementation::publish() {
    positions.clear();
    for (hyxWire::ChainSolver::Point const& point : chain.points)
        positions.push_back(point.position);
    ++revision;
}

} // namespace hyxCable
