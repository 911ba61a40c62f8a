// Sources from which grains come.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <random>

namespace hyx {

/// Makes grains at a rate, at random places inside a box.
/// The places come from the emitter's own generator, so a run repeats exactly.
class Emitter : public Process {
public:
    /// An emitter that fills `target`; null is allowed and emits nothing until `setParticleSystem`.
    explicit Emitter(ParticleSystem* target = nullptr);

    /// The system that receives the grains; null stops them.
    void setParticleSystem(ParticleSystem* target);
    ParticleSystem* getParticleSystem() const;

    /// The box that things are made in: its centre in metres, world.
    void setPosition(Vec3 const& position);
    Vec3 getPosition() const;
    /// Half the sides of the box in metres, (0.5, 0.5, 0.1) at first. Throws `std::invalid_argument` below 0.
    void setHalfExtents(Vec3 const& halfExtents);
    Vec3 getHalfExtents() const;
    /// The velocity in m/s that things start with.
    void setVelocity(Vec3 const& velocity);
    Vec3 getVelocity() const;
    /// How many things are made a second, 10 at first; one step makes 10 000 grains or 1000 bodies at most. Throws
    /// `std::invalid_argument` below 0.
    void setRate(Real perSecond);
    Real getRate() const;
    /// How many things are made in all; without limit at first.
    void setMaximumEmitted(UInt count);
    UInt getMaximumEmitted() const;
    /// How many things have been made.
    UInt getNumEmitted() const;
    /// Starts the generator of places anew.
    void setSeed(UInt seed);
    /// A disabled emitter makes nothing.
    void setEnable(bool enable);
    bool getEnable() const;

    /// Makes what is due after `timeStep` more seconds. Throws `std::invalid_argument` unless it is above 0.
    void step(Real timeStep);
    /// Advances by the simulation's time step.
    void postStep(TimeStamp time, Real timeStep) override;

protected:
    ~Emitter() override;

    /// Makes one thing; false when that was not possible, and it then does not count.
    virtual bool emit(Vec3 const& position, Vec3 const& velocity);

    /// The most things that one step makes.
    virtual UInt mostAtOnce() const;

    /// A number in [0, 1) from the emitter's generator.
    Real random();

private:
    Vec3 randomPosition();

    ref_ptr<ParticleSystem> m_target;
    Vec3 m_position;
    Vec3 m_halfExtents = Vec3(0.5, 0.5, 0.1);
    Vec3 m_velocity;
    Real m_rate = 10;
    Real m_due = 0;
    UInt m_maximum = ~UInt(0);
    UInt m_emitted = 0;
    bool m_enable = true;
    std::mt19937_64 m_generator;
};

} // namespace hyx
