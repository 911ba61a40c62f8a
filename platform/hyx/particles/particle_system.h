// Grains in great number, and what they touch.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4f.h"

#include <memory>
#include <vector>

namespace hyx {

class RigidBody;

/// One grain: a sphere with a mass of its own.
struct Particle {
    Index id = 0;       ///< unique within its system, never used again
    Vec3 position;      ///< metres, world
    Vec3 velocity;      ///< m/s
    Quat rotation;      ///< from rolling, for drawing
    Real radius = 0.05; ///< metres
    Real mass = 1;      ///< kg
    Real age = 0;       ///< seconds since it was made
    Vec4f color = Vec4f(0.55f, 0.45f, 0.35f, 1.0f);
};

/// Two grains, or a grain and the surroundings, that touched in the last step.
struct ParticleContact {
    static constexpr Index surroundings = ~Index(0);
    Index first;  ///< place in `ParticleSystem::getParticles`
    Index second; ///< place of the other grain, or `surroundings`
    Vec3 point;   ///< metres, world
    Vec3 normal;  ///< unit, towards `first`
    Real force;   ///< newtons, along the normal
};

/// What grains cannot enter: the ground, a terrain, a tool.
class ParticleObstacle : public Referenced {
public:
    /// The surface point nearest to a grain.
    struct Surface {
        Real distance; ///< metres from the grain's centre to the surface, negative inside
        Vec3 normal;   ///< unit, out of the obstacle
        Vec3 velocity; ///< m/s of the surface there
    };

    /// Whether the obstacle is nearer than `reach` metres to `position`; fills `surface` then.
    virtual bool find(Vec3 const& position, Real reach, Surface& surface) const = 0;

protected:
    ~ParticleObstacle() override = default;
};

/// Grains that collide with each other and with obstacles, with dry friction, under gravity.
/// They slide and do not roll, push the bodies that are their obstacles, and stand in heaps at the angle of their
/// friction. A step works on speeds and starts from the loads of the last one, so that what lies stays; overlaps are
/// parted without giving speed. Results depend on the order of grains only and are the same run to run.
class ParticleSystem : public Process {
public:
    ParticleSystem();

    /// Adds a grain at `position` (metres) with `velocity` (m/s) and the system's radius; its mass is that of a sphere
    /// of the system's density. Returns its id. Throws `std::invalid_argument` for a position or velocity that is not
    /// finite.
    Index createParticle(Vec3 const& position, Vec3 const& velocity = Vec3());
    /// Adds a grain with its own radius (metres, above 0) and mass (kg, above 0). Returns its id.
    Index createParticle(Vec3 const& position, Vec3 const& velocity, Real radius, Real mass);
    /// Removes the grain with this id; false when there is none.
    bool removeParticle(Index id);
    /// Removes all grains.
    void clear();

    /// The number of grains.
    UInt getNumParticles() const;
    /// All grains; the places change when grains are removed.
    std::vector<Particle> const& getParticles() const;
    /// All grains, to be changed in place between steps.
    std::vector<Particle>& getParticles();
    /// The grain with this id, null when there is none.
    Particle const* getParticle(Index id) const;
    /// The contacts of the last step.
    std::vector<ParticleContact> const& getContacts() const;
    /// The sum of all masses in kg.
    Real getMass() const;

    /// Radius in metres of grains to come, 0.05 at first. Throws `std::invalid_argument` unless above 0.
    void setParticleRadius(Real radius);
    Real getParticleRadius() const;
    /// Density in kg/m3 of grains to come, 1500 at first.
    void setDensity(Real density);
    Real getDensity() const;
    /// Coefficient of dry friction in all contacts, 0.6 at first: heaps stand at its angle. Throws
    /// `std::invalid_argument` below 0.
    void setFriction(Real friction);
    Real getFriction() const;
    /// Gravity in m/s2 while this is in no simulation, standard gravity along -Z at first; in a simulation, that one's
    /// gravity acts. Throws `std::invalid_argument` when not finite.
    void setGravity(Vec3 const& gravity);
    /// What acts now, m/s2: the simulation's gravity, or the own one in none.
    Vec3 getGravity() const;
    /// Seconds after which a grain is removed; infinite at first.
    void setLifetime(Real seconds);
    Real getLifetime() const;
    /// Disabled grains stand still and are not drawn.
    void setEnable(bool enable);
    bool getEnable() const;

    /// Adds an obstacle, which is kept alive; null is ignored.
    void addObstacle(ParticleObstacle* obstacle);
    /// Adds a body's geometries as an obstacle. Throws `std::invalid_argument` for null.
    void addObstacle(RigidBody* body);
    /// Removes an obstacle; false when it was not there.
    bool removeObstacle(ParticleObstacle* obstacle);
    bool removeObstacle(RigidBody* body);

    /// Advances all grains by `timeStep` seconds. Throws `std::invalid_argument` unless it is above 0.
    void step(Real timeStep);

    /// Advances by the simulation's time step.
    void postStep(TimeStamp time, Real timeStep) override;

protected:
    ~ParticleSystem() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyx
