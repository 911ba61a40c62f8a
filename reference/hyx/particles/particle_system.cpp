// The operations of grains.
#include "platform/hyx/particles/particle_system.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/objects/process_gravity.h"
#include "reference/hyx/particles/body_obstacle.h"
#include "reference/hyx/particles/grain_solver.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace hyx {

namespace {

Real sphereVolume(Real radius) {
    return 4.0 / 3.0 * std::numbers::pi * radius * radius * radius;
}

} // namespace

struct ParticleSystem::Implementation {
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
    GrainSolver solver;
};

ParticleSystem::ParticleSystem() : m_implementation(std::make_unique<Implementation>()) {
    keepState(this, [this](StateBytes& bytes) {
        Implementation& self = *m_implementation;
        bytes(self.particles, self.contacts, self.nextId, self.radius, self.density, self.friction, self.lifetime,
              self.enable);
        self.solver.exchangeState(bytes);
    });
}

ParticleSystem::~ParticleSystem() {
    forgetState(this);
}

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
    m_implementation->solver.clear();
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
    Implementation& self = *m_implementation;
    self.solver.step(self.particles, self.obstacles, getGravity(), self.friction, timeStep);
    self.solver.tellContacts(self.particles, self.contacts);
    for (Particle& particle : m_implementation->particles)
        particle.age += timeStep;
    std::erase_if(m_implementation->particles,
                  [this](Particle const& particle) { return particle.age > m_implementation->lifetime; });
}

void ParticleSystem::postStep(TimeStamp, Real timeStep) {
    step(timeStep);
}

} // namespace hyx
