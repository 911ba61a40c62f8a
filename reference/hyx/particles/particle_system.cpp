// Moves grains and keeps them apart, in substeps that correct positions.
#include "platform/hyx/particles/particle_system.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/objects/process_gravity.h"
#include "reference/hyx/particles/body_obstacle.h"
#include "reference/hyx/particles/neighbour_grid.h"
#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace hyx {

namespace {

constexpr int substepsPerStep = 2;
constexpr int sweepsPerSubstep = 4;
constexpr int mostPartings = 10;
/// Overlap in radii that is left to the contacts.
constexpr Real toleratedOverlap = 0.01;

Real sphereVolume(Real radius) {
    return 4.0 / 3.0 * std::numbers::pi * radius * radius * radius;
}

} // namespace

struct ParticleSystem::Implementation {
    struct Pair {
        std::size_t first, second;
        Vec3 normal;
        Real push = 0; ///< metres by which the pair was driven apart in the last substep
    };

    struct Touch {
        std::size_t particle;
        Vec3 point, normal;
        Real push = 0;
    };

    std::vector<Particle> particles;
    std::vector<ParticleContact> contacts;
    std::vector<ref_ptr<ParticleObstacle>> obstacles;
    Index nextId = 0;
    Real radius = 0.05;
    Real density = 1500;
    Real friction = 0.6;
    ProcessGravity gravity;
    Real lifetime = std::numeric_limits<Real>::infinity();
    bool enable = true;

    NeighbourGrid grid;
    std::vector<Vec3> predicted;
    std::vector<Vec3> spin;
    Real fastest = 0; ///< m/s of grains and surfaces in this substep
    std::vector<Pair> pairs;
    std::vector<Touch> touches;

    void substep(Real h, Vec3 const& acceleration);
    void findPairs();
    bool partOverlaps();
    bool leaveObstacles(Real h);
    void separatePairs();
    void pushOutOfObstacles(Real h);
    void recordContacts(Real h);
    void rub(Vec3& relative, Vec3 const& normal, Real push) const;
};

ParticleSystem::ParticleSystem() : m_implementation(std::make_unique<Implementation>()) {}

ParticleSystem::~ParticleSystem() = default;

Index ParticleSystem::createParticle(Vec3 const& position, Vec3 const& velocity) {
    return createParticle(position, velocity, m_implementation->radius,
                          m_implementation->density * sphereVolume(m_implementation->radius));
}

Index ParticleSystem::createParticle(Vec3 const& position, Vec3 const& velocity, Real radius, Real mass) {
    requireFinite(position, "the position of a particle");
    requireFinite(velocity, "the velocity of a particle");
    requirePositive(radius, "the radius of a particle");
    requirePositive(mass, "the mass of a particle");
    Particle particle;
    particle.id = m_implementation->nextId++;
    particle.position = position;
    particle.velocity = velocity;
    particle.radius = radius;
    particle.mass = mass;
    m_implementation->particles.push_back(particle);
    return particle.id;
}

bool ParticleSystem::removeParticle(Index id) {
    return std::erase_if(m_implementation->particles, [id](Particle const& particle) { return particle.id == id; }) > 0;
}

void ParticleSystem::clear() {
    m_implementation->particles.clear();
    m_implementation->contacts.clear();
}

UInt ParticleSystem::getNumParticles() const {
    return m_implementation->particles.size();
}

std::vector<Particle> const& ParticleSystem::getParticles() const {
    return m_implementation->particles;
}

std::vector<Particle>& ParticleSystem::getParticles() {
    return m_implementation->particles;
}

std::vector<ParticleContact> const& ParticleSystem::getContacts() const {
    return m_implementation->contacts;
}

Particle const* ParticleSystem::getParticle(Index id) const {
    // Ids rise with the place, since particles are only ever appended or removed.
    auto const found = std::lower_bound(m_implementation->particles.begin(), m_implementation->particles.end(), id,
                                        [](Particle const& particle, Index wanted) { return particle.id < wanted; });
    return found != m_implementation->particles.end() && found->id == id ? &*found : nullptr;
}

Real ParticleSystem::getMass() const {
    Real mass = 0;
    for (Particle const& particle : m_implementation->particles)
        mass += particle.mass;
    return mass;
}

void ParticleSystem::setParticleRadius(Real radius) {
    m_implementation->radius = requirePositive(radius, "the radius of particles");
}

Real ParticleSystem::getParticleRadius() const {
    return m_implementation->radius;
}

void ParticleSystem::setDensity(Real density) {
    m_implementation->density = requirePositive(density, "the density of particles");
}

Real ParticleSystem::getDensity() const {
    return m_implementation->density;
}

void ParticleSystem::setFriction(Real friction) {
    m_implementation->friction = requireNonNegative(friction, "the friction of particles");
}

Real ParticleSystem::getFriction() const {
    return m_implementation->friction;
}

void ParticleSystem::setGravity(Vec3 const& gravity) {
    m_implementation->gravity.setOwn(gravity);
}

Vec3 ParticleSystem::getGravity() const {
    return m_implementation->gravity.of(*this);
}

void ParticleSystem::setLifetime(Real seconds) {
    if (!(seconds > 0))
        throw std::invalid_argument("the lifetime of particles must be above 0");
    m_implementation->lifetime = seconds;
}

Real ParticleSystem::getLifetime() const {
    return m_implementation->lifetime;
}

void ParticleSystem::setEnable(bool enable) {
    m_implementation->enable = enable;
}

bool ParticleSystem::getEnable() const {
    return m_implementation->enable;
}

void ParticleSystem::addObstacle(ParticleObstacle* obstacle) {
    if (obstacle)
        m_implementation->obstacles.push_back(obstacle);
}

void ParticleSystem::addObstacle(RigidBody* body) {
    if (!body)
        throw std::invalid_argument("an obstacle for particles needs a body");
    m_implementation->obstacles.push_back(new BodyObstacle(body));
}

bool ParticleSystem::removeObstacle(ParticleObstacle* obstacle) {
    return std::erase_if(m_implementation->obstacles,
                         [obstacle](auto const& other) { return other.get() == obstacle; }) > 0;
}

bool ParticleSystem::removeObstacle(RigidBody* body) {
    return std::erase_if(m_implementation->obstacles, [body](auto const& other) {
               auto const* obstacle = dynamic_cast<BodyObstacle const*>(other.get());
               return obstacle && obstacle->getRigidBody() == body;
           }) > 0;
}

void ParticleSystem::step(Real timeStep) {
    requirePositive(timeStep, "the time step of particles");
    if (!m_implementation->enable)
        return;
    for (int i = 0; i < substepsPerStep; ++i)
        m_implementation->substep(timeStep / substepsPerStep, getGravity());
    m_implementation->recordContacts(timeStep / substepsPerStep);
    for (Particle& particle : m_implementation->particles)
        particle.age += timeStep;
    std::erase_if(m_implementation->particles,
                  [this](Particle const& particle) { return particle.age > m_implementation->lifetime; });
}

void ParticleSystem::postStep(TimeStamp, Real timeStep) {
    step(timeStep);
}

void ParticleSystem::Implementation::substep(Real h, Vec3 const& acceleration) {
    predicted.clear();
    fastest = 0;
    spin.assign(particles.size(), Vec3());
    touches.clear();
    for (Particle& particle : particles) {
        particle.velocity += acceleration * h;
        predicted.push_back(particle.position + particle.velocity * h);
        fastest = std::max(fastest, particle.velocity.length());
    }
    findPairs();
    bool apart = false;
    for (int round = 0; round < mostPartings && !apart; ++round) {
        bool const parted = partOverlaps(), left = leaveObstacles(h);
        apart = !parted && !left;
    }
    for (int sweep = 0; sweep < sweepsPerSubstep; ++sweep) {
        separatePairs();
        pushOutOfObstacles(h);
    }
    for (std::size_t i = 0; i < particles.size(); ++i) {
        Particle& particle = particles[i];
        particle.velocity = (predicted[i] - particle.position) / h;
        // Dull contacts make nothing faster than the fastest was; what is, was pressed out of an overlap.
        if (Real const speed = particle.velocity.length(); speed > fastest)
            particle.velocity *= fastest / speed;
        particle.position = predicted[i];
        if (Real const angle = spin[i].length(); angle > 0)
            particle.rotation = (particle.rotation * Quat(angle, spin[i])).normal();
    }
}

void ParticleSystem::Implementation::findPairs() {
    pairs.clear();
    Real largest = 0;
    for (Particle const& particle : particles)
        largest = std::max(largest, particle.radius);
    if (largest == 0)
        return;
    // A tenth more, for pairs that only touch after others have moved them.
    grid.build(predicted, 2.2 * largest);
    grid.forEachPair([this](std::size_t i, std::size_t j) {
        Real const reach = 1.1 * (particles[i].radius + particles[j].radius);
        if ((predicted[i] - predicted[j]).length2() < reach * reach)
            pairs.push_back({i, j, Vec3(), 0});
    });
}

// Grains that were put into each other are parted without gaining speed: place and prediction move together. Whether
// there were any.
bool ParticleSystem::Implementation::partOverlaps() {
    bool parted = false;
    for (Pair const& pair : pairs) {
        Particle& a = particles[pair.first];
        Particle& b = particles[pair.second];
        Vec3 const apart = a.position - b.position;
        Real const distance = apart.length(), overlap = a.radius + b.radius - distance;
        if (overlap <= toleratedOverlap * a.radius)
            continue;
        parted = true;
        // Grains in one and the same place are parted upwards.
        Vec3 const shift = (distance > 0 ? apart / distance : Vec3(0, 0, 1)) * (overlap / (a.mass + b.mass));
        a.position += shift * b.mass;
        predicted[pair.first] += shift * b.mass;
        b.position -= shift * a.mass;
        predicted[pair.second] -= shift * a.mass;
    }
    return parted;
}

// The same for grains that were put into an obstacle; what the obstacle's own motion did since the last step still
// drives them.
bool ParticleSystem::Implementation::leaveObstacles(Real h) {
    bool left = false;
    for (ref_ptr<ParticleObstacle> const& obstacle : obstacles)
        for (std::size_t i = 0; i < particles.size(); ++i) {
            ParticleObstacle::Surface surface;
            if (!obstacle->find(particles[i].position, particles[i].radius, surface))
                continue;
            Real const driven = std::max(0.0, surface.velocity.dot(surface.normal)) * h * substepsPerStep;
            Real const excess = particles[i].radius - surface.distance - driven;
            if (excess <= toleratedOverlap * particles[i].radius)
                continue;
            left = true;
            particles[i].position += surface.normal * excess;
            predicted[i] += surface.normal * excess;
        }
    return left;
}

// Takes the part of a sliding displacement away that dry friction holds back under a push.
void ParticleSystem::Implementation::rub(Vec3& relative, Vec3 const& normal, Real push) const {
    Vec3 const sliding = relative - normal * relative.dot(normal);
    Real const size = sliding.length();
    Real const held = friction * push;
    relative = size > held ? sliding * (held / size) : sliding;
}

void ParticleSystem::Implementation::separatePairs() {
    for (Pair& pair : pairs) {
        Particle const& a = particles[pair.first];
        Particle const& b = particles[pair.second];
        Vec3 const apart = predicted[pair.first] - predicted[pair.second];
        Real const distance = apart.length();
        Real const overlap = a.radius + b.radius - distance;
        if (overlap <= 0)
            continue;
        pair.normal = distance > 0 ? apart / distance : Vec3(0, 0, 1);
        pair.push += overlap;
        Real const shareA = b.mass / (a.mass + b.mass), shareB = 1 - shareA;
        Vec3 slide = (predicted[pair.first] - a.position) - (predicted[pair.second] - b.position);
        rub(slide, pair.normal, overlap);
        predicted[pair.first] += pair.normal * (overlap * shareA) - slide * shareA;
        predicted[pair.second] -= pair.normal * (overlap * shareB) - slide * shareB;
        spin[pair.first] += pair.normal.cross(slide) * (shareA / a.radius);
        spin[pair.second] += pair.normal.cross(slide) * (shareB / b.radius);
    }
}

void ParticleSystem::Implementation::pushOutOfObstacles(Real h) {
    for (ref_ptr<ParticleObstacle> const& obstacle : obstacles)
        for (std::size_t i = 0; i < particles.size(); ++i) {
            ParticleObstacle::Surface surface;
            Real const radius = particles[i].radius;
            if (!obstacle->find(predicted[i], radius, surface) || surface.distance >= radius)
                continue;
            Real const push = radius - surface.distance;
            fastest = std::max(fastest, surface.velocity.length());
            Vec3 slide = predicted[i] - particles[i].position - surface.velocity * h;
            Vec3 const rolled = slide - surface.normal * slide.dot(surface.normal);
            rub(slide, surface.normal, push);
            predicted[i] += surface.normal * push - slide;
            spin[i] = surface.normal.cross(rolled - slide) / radius;
            touches.push_back({i, predicted[i] - surface.normal * radius, surface.normal, push});
        }
}

// A push of d metres within a substep of h seconds is the work of a force m d / h^2.
void ParticleSystem::Implementation::recordContacts(Real h) {
    contacts.clear();
    for (Pair const& pair : pairs) {
        if (pair.push <= 0)
            continue;
        Real const massA = particles[pair.first].mass, massB = particles[pair.second].mass;
        Vec3 const point = particles[pair.second].position + pair.normal * particles[pair.second].radius;
        contacts.push_back(
            {pair.first, pair.second, point, pair.normal, pair.push * massA * massB / (massA + massB) / (h * h)});
    }
    // An obstacle is asked once in each sweep: its pushes on one grain add up.
    std::stable_sort(touches.begin(), touches.end(),
                     [](Touch const& a, Touch const& b) { return a.particle < b.particle; });
    for (Touch const& touch : touches) {
        Real const force = touch.push * particles[touch.particle].mass / (h * h);
        if (!contacts.empty() && contacts.back().second == ParticleContact::surroundings &&
            contacts.back().first == touch.particle && contacts.back().normal.dot(touch.normal) > 0.99)
            contacts.back().force += force;
        else
            contacts.push_back({touch.particle, ParticleContact::surroundings, touch.point, touch.normal, force});
    }
}

} // namespace hyx
