// Drops grains at a rate, at places that repeat from run to run.
#include "platform/hyx/particles/emitter.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>

namespace hyx {

Emitter::Emitter(ParticleSystem* target) : m_target(target) {
    keepState(this, [this](StateBytes& bytes) {
        bytes(m_position, m_halfExtents, m_velocity, m_rate, m_due, m_maximum, m_emitted, m_enable, m_generator);
    });
}

Emitter::~Emitter() {
    forgetState(this);
}

void Emitter::setParticleSystem(ParticleSystem* target) {
    m_target = target;
}

ParticleSystem* Emitter::getParticleSystem() const {
    return m_target.get();
}

void Emitter::setPosition(Vec3 const& position) {
    m_position = position;
}

Vec3 Emitter::getPosition() const {
    return m_position;
}

void Emitter::setHalfExtents(Vec3 const& halfExtents) {
    for (std::size_t i = 0; i < 3; ++i)
        requireNonNegative(halfExtents[i], "a half extent of an emitter");
    m_halfExtents = halfExtents;
}

Vec3 Emitter::getHalfExtents() const {
    return m_halfExtents;
}

void Emitter::setVelocity(Vec3 const& velocity) {
    m_velocity = velocity;
}

Vec3 Emitter::getVelocity() const {
    return m_velocity;
}

void Emitter::setRate(Real perSecond) {
    m_rate = requireNonNegative(perSecond, "the rate of an emitter");
}

Real Emitter::getRate() const {
    return m_rate;
}

void Emitter::setMaximumEmitted(UInt count) {
    m_maximum = count;
}

UInt Emitter::getMaximumEmitted() const {
    return m_maximum;
}

UInt Emitter::getNumEmitted() const {
    return m_emitted;
}

void Emitter::setSeed(UInt seed) {
    m_generator.seed(seed);
}

void Emitter::setEnable(bool enable) {
    m_enable = enable;
}

bool Emitter::getEnable() const {
    return m_enable;
}

void Emitter::step(Real timeStep) {
    requirePositive(timeStep, "the time step of an emitter");
    if (!m_enable)
        return;
    m_due = std::min(m_due + timeStep * m_rate, static_cast<Real>(mostAtOnce()));
    // The slack keeps ten steps of a tenth from summing up to just less than one.
    for (; m_due >= 1 - 1e-9 && m_emitted < m_maximum; --m_due) {
        Vec3 const position = randomPosition();
        if (emit(position, m_velocity))
            ++m_emitted;
    }
    if (m_emitted >= m_maximum)
        m_due = 0;
}

void Emitter::postStep(TimeStamp, Real timeStep) {
    step(timeStep);
}

bool Emitter::emit(Vec3 const& position, Vec3 const& velocity) {
    if (m_target)
        m_target->createParticle(position, velocity);
    return m_target.valid();
}

UInt Emitter::mostAtOnce() const {
    return 10000;
}

// Scaled by hand: the distributions of the standard library differ from one library to the next.
Real Emitter::random() {
    return static_cast<Real>(m_generator() >> 11) * 0x1p-53;
}

Vec3 Emitter::randomPosition() {
    Vec3 offset;
    for (std::size_t i = 0; i < 3; ++i)
        offset[i] = (2 * random() - 1) * m_halfExtents[i];
    return m_position + offset;
}

} // namespace hyx
