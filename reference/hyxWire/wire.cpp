// The operations of wires and their winches, and their step.
#include "platform/hyxWire/wire.h"

#include "reference/hyx/objects/process_gravity.h"
#include "reference/hyx/particles/body_obstacle.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxWire/chain_route.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <numbers>
#include <numeric>
#include <stdexcept>

namespace hyxWire {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr Real steelDensity = 7800;
constexpr Real ropeModulus = 1e11;
/// Part of the radius by which a point gives before it slides.
constexpr Real gripPart = 0.02;
/// Edges are rounded off to so many lengths of a segment.
constexpr Real rounding = 2;
/// Part of the radius within which a wire may be drawn onto a surface in a substep.
constexpr Real contactReach = 0.2;
/// m/s, by which a point may come nearer to a body during a step than both speeds tell.
constexpr Real haste = 5;
constexpr hyx::UInt mostWireSubsteps = 10000;

} // namespace

struct Wire::Implementation {
    ChainRoute route;
    ChainSolver chain;
    hyx::ProcessGravity gravity;
    Real radius;
    Real segmentLength;
    Real massPerLength;
    hyx::UInt substeps = 20;
    Real winchSpeed = 0;
    std::vector<hyx::ref_ptr<hyx::BodyObstacle>> obstacles;
    /// The obstacles that each point may touch in a step.
    std::vector<std::vector<std::size_t>> near;
    std::vector<hyx::ParticleObstacle::Surface> surfaces;
    hyx::UInt revision = 0;
    std::vector<Vec3> positions;

    Real growth(Real timeStep) const;
    void publish();
    void takePlaces(Vec3 const& ownGravity, Real timeStep);
    void lookAround(Real timeStep);
    bool findContact(std::size_t point, Vec3 const& place, ChainSolver::Contact& contact);
};

Wire::Wire(Real radius, Real segmentsPerMetre) : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->radius = hyx::requirePositive(radius, "the radius of a wire");
    m_implementation->segmentLength =
        1 / hyx::requirePositive(segmentsPerMetre, "the number of segments per metre of a wire");
    Real const section = std::numbers::pi * radius * radius;
    m_implementation->massPerLength = steelDensity * section;
    m_implementation->chain.axialStiffness = ropeModulus * section;
    m_implementation->chain.damping = 0.5;
    m_implementation->chain.friction = 0.2;
    m_implementation->chain.grip = gripPart * radius;
    hyx::keepState(this, [this](hyx::StateBytes& bytes) {
        Implementation& self = *m_implementation;
        self.route.exchangeState(bytes);
        self.chain.exchangeState(bytes);
        bytes(self.massPerLength, self.substeps, self.winchSpeed, self.revision, self.positions);
    });
}

Wire::~Wire() {
    hyx::forgetState(this);
}

void Wire::add(Vec3 const& point) {
    if (isInitialized())
        throw std::runtime_error("the route of a wire cannot grow after its first step");
    m_implementation->route.add(point);
}

void Wire::add(hyx::RigidBody* body, Vec3 const& localPoint) {
    if (isInitialized())
        throw std::runtime_error("the route of a wire cannot grow after its first step");
    m_implementation->route.add(body, localPoint);
}

void Wire::addObstacle(hyx::RigidBody* body) {
    if (!body)
        throw std::invalid_argument("a wire lies on a body, not on nothing");
    removeObstacle(body);
    m_implementation->obstacles.push_back(new hyx::BodyObstacle(body));
}

bool Wire::removeObstacle(hyx::RigidBody* body) {
    return std::erase_if(m_implementation->obstacles,
                         [body](auto const& obstacle) { return obstacle->getRigidBody() == body; }) > 0;
}

void Wire::setFriction(Real friction) {
    m_implementation->chain.friction = hyx::requireNonNegative(friction, "the friction of a wire");
}

Real Wire::getFriction() const {
    return m_implementation->chain.friction;
}

void Wire::initialize() {
    if (isInitialized())
        return;
    m_implementation->route.build(m_implementation->chain, m_implementation->segmentLength,
                                  m_implementation->massPerLength);
    m_implementation->publish();
}

bool Wire::isInitialized() const {
    return !m_implementation->chain.restLengths.empty();
}

Real Wire::getRadius() const {
    return m_implementation->radius;
}

void Wire::setMassPerLength(Real mass) {
    hyx::requirePositive(mass, "the mass per length of a wire");
    for (ChainSolver::Point& point : m_implementation->chain.points)
        point.inverseMass *= m_implementation->massPerLength / mass;
    m_implementation->massPerLength = mass;
}

Real Wire::getMassPerLength() const {
    return m_implementation->massPerLength;
}

void Wire::setAxialStiffness(Real stiffness) {
    m_implementation->chain.axialStiffness = hyx::requirePositive(stiffness, "the stiffness of a wire");
}

Real Wire::getAxialStiffness() const {
    return m_implementation->chain.axialStiffness;
}

void Wire::setDamping(Real damping) {
    m_implementation->chain.damping = hyx::requireNonNegative(damping, "the damping of a wire");
}

Real Wire::getDamping() const {
    return m_implementation->chain.damping;
}

void Wire::setGravity(Vec3 const& gravity) {
    m_implementation->gravity.setOwn(gravity);
}

Vec3 Wire::getGravity() const {
    return m_implementation->gravity.of(*this);
}

void Wire::setNumSubsteps(hyx::UInt count) {
    if (count < 1 || count > mostWireSubsteps)
        throw std::invalid_argument("a wire takes 1 to 10000 substeps");
    m_implementation->substeps = count;
}

hyx::UInt Wire::getNumSubsteps() const {
    return m_implementation->substeps;
}

void Wire::setWinchSpeed(Real speed) {
    m_implementation->winchSpeed = hyx::requireFinite(speed, "the speed of a winch");
}

Real Wire::getWinchSpeed() const {
    return m_implementation->winchSpeed;
}

Real Wire::getRestLength() const {
    return std::accumulate(m_implementation->chain.restLengths.begin(), m_implementation->chain.restLengths.end(), 0.0);
}

Real Wire::getCurrentLength() const {
    return m_implementation->chain.length();
}

hyx::UInt Wire::getNumPoints() const {
    return m_implementation->positions.size();
}

Vec3 Wire::getPoint(hyx::Index index) const {
    return m_implementation->positions.at(index);
}

std::vector<Vec3> const& Wire::getPoints() const {
    return m_implementation->positions;
}

Real Wire::getTension(hyx::Index segment) const {
    return m_implementation->chain.tensions.at(segment);
}

std::vector<Real> const& Wire::getTensions() const {
    return m_implementation->chain.tensions;
}

Real Wire::getMaximumTension() const {
    auto const& tensions = m_implementation->chain.tensions;
    return tensions.empty() ? 0 : *std::max_element(tensions.begin(), tensions.end());
}

hyx::UInt Wire::getRevision() const {
    return m_implementation->revision;
}

void Wire::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a wire");
    initialize();
    m_implementation->takePlaces(getGravity(), timeStep);
    m_implementation->chain.step(timeStep, m_implementation->substeps, getGravity(),
                                 m_implementation->growth(timeStep));
    m_implementation->route.pullBodies(m_implementation->chain, timeStep);
    m_implementation->publish();
}

void Wire::preStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

// The winch lengthens or shortens all segments alike, so that the number of points stays; a tenth of the laid length is
// left on the way in.
Real Wire::Implementation::growth(Real timeStep) const {
    Real const total = std::accumulate(chain.restLengths.begin(), chain.restLengths.end(), 0.0);
    Real const shortest = std::min(total, 0.1 * segmentLength * static_cast<Real>(chain.restLengths.size()));
    return std::max(total + winchSpeed * timeStep, shortest) / total;
}

void Wire::Implementation::takePlaces(Vec3 const& ownGravity, Real timeStep) {
    std::vector<hyx::RigidBody*> touched;
    for (auto const& obstacle : obstacles)
        touched.push_back(obstacle->getRigidBody());
    route.takePlaces(chain, touched, ownGravity, timeStep);
    chain.findContact = nullptr;
    if (obstacles.empty())
        return;
    lookAround(timeStep);
    chain.findContact = [this](std::size_t point, Vec3 const& place, ChainSolver::Contact& contact) {
        return findContact(point, place, contact);
    };
}

// Between two points a chain is straight: edges that are sharper than a segment is long would be cut off and jump from
// point to point.
void Wire::Implementation::lookAround(Real timeStep) {
    for (auto const& obstacle : obstacles)
        obstacle->prepare(rounding * segmentLength);
    near.assign(chain.points.size(), {});
    for (std::size_t i = 0; i < chain.points.size(); ++i) {
        Vec3 const& place = chain.points[i].position;
        for (std::size_t k = 0; k < obstacles.size() && !route.isAttached(i); ++k) {
            ChainSolver::Body const& body = chain.bodies[route.numberOf(obstacles[k]->getRigidBody())];
            Real const speed = (chain.points[i].velocity - body.velocityAt(place)).length() + haste;
            surfaces.clear();
            obstacles[k]->findAll(place, 2 * radius + speed * timeStep, surfaces);
            if (!surfaces.empty())
                near[i].push_back(k);
        }
    }
}

bool Wire::Implementation::findContact(std::size_t point, Vec3 const& place, ChainSolver::Contact& contact) {
    bool found = false;
    for (std::size_t const k : near[point]) {
        int const number = route.numberOf(obstacles[k]->getRigidBody());
        ChainSolver::Body const& body = chain.bodies[number];
        surfaces.clear();
        obstacles[k]->findAll(body.atStart(place), (1 + contactReach) * radius, surfaces);
        for (auto const& surface : surfaces) {
            if (found && surface.distance - radius >= contact.gap)
                continue;
            found = true;
            contact.body = number;
            contact.normal = body.directionNow(surface.normal);
            contact.gap = surface.distance - radius;
        }
    }
    return found;
}

void Wire::Implementation::publish() {
    positions.clear();
    for (ChainSolver::Point const& point : chain.points)
        positions.push_back(point.position);
    ++revision;
}

} // namespace hyxWire
