// Rows of the grains.
#include "platform/hyx/particles/particle_system.h"

#include "binding/vocabulary/number_arrays.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"

#include <algorithm>
#include <cmath>

namespace {

PyObject* particles(hyx::ParticleSystem const& self) {
    return vocabulary::to_list(self.getParticles());
}

PyObject* contacts(hyx::ParticleSystem const& self) {
    return vocabulary::to_list(self.getContacts());
}

// A row for each grain.
template <class Number, class Value>
PyObject* rows_of(hyx::ParticleSystem const& self, Value hyx::Particle::* member) {
    auto const& particles = self.getParticles();
    return vocabulary::new_array<Number>(particles.size(), Value::size(), [&](Number* to) {
        for (hyx::Particle const& particle : particles)
            for (std::size_t i = 0; i < Value::size(); ++i)
                *to++ = (particle.*member)[i];
    });
}

template <class Value>
void set_rows(hyx::ParticleSystem& self, Value hyx::Particle::* member, PyObject* values) {
    auto& particles = self.getParticles();
    std::vector<double> const numbers = vocabulary::read_rows(values, Value::size());
    if (numbers.size() != particles.size() * Value::size())
        throw std::invalid_argument("the system has " + std::to_string(particles.size()) +
                                    " grains: give a row for each");
    if (!std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); }))
        throw std::invalid_argument("what is set of grains must be finite numbers");
    auto const* from = numbers.data();
    for (hyx::Particle& particle : particles)
        for (std::size_t i = 0; i < Value::size(); ++i)
            (particle.*member)[i] = static_cast<typename Value::value_type>(*from++);
}

// Metres.
PyObject* positions(hyx::ParticleSystem const& self) {
    return rows_of<double>(self, &hyx::Particle::position);
}

void set_positions(hyx::ParticleSystem& self, PyObject* values) {
    set_rows(self, &hyx::Particle::position, values);
}

// Metres a second.
PyObject* velocities(hyx::ParticleSystem const& self) {
    return rows_of<double>(self, &hyx::Particle::velocity);
}

void set_velocities(hyx::ParticleSystem& self, PyObject* values) {
    set_rows(self, &hyx::Particle::velocity, values);
}

PyObject* particle_colors(hyx::ParticleSystem const& self) {
    return rows_of<float>(self, &hyx::Particle::color);
}

void set_particle_colors(hyx::ParticleSystem& self, PyObject* values) {
    set_rows(self, &hyx::Particle::color, values);
}

// A copy: grains move in memory when others are removed.
PyObject* particle(hyx::ParticleSystem const& self, hyx::Index id) {
    hyx::Particle const* const found = self.getParticle(id);
    return found ? vocabulary::from_object(*found) : Py_NewRef(Py_None);
}

constexpr Declared particle_system_rows[] = {
    FUNCTION(new_ParticleSystem, NEW(hyx::ParticleSystem, ())),
    FUNCTION(ParticleSystem_createParticle,
             METHOD(hyx::ParticleSystem, createParticle, (hyx::Vec3 const&, hyx::Vec3 const&), hyx::Vec3()),
             METHOD(hyx::ParticleSystem, createParticle, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Real, hyx::Real))),
    FUNCTION(ParticleSystem_removeParticle, METHOD(hyx::ParticleSystem, removeParticle, (hyx::Index))),
    FUNCTION(ParticleSystem_clear, METHOD(hyx::ParticleSystem, clear, ())),
    FUNCTION(ParticleSystem_getNumParticles, METHOD(hyx::ParticleSystem, getNumParticles, () const)),
    FUNCTION(ParticleSystem_getParticles, ADAPTER(hyx::ParticleSystem, getParticles, particles, () const)),
    FUNCTION(ParticleSystem_getPositions, ADAPTER(hyx::ParticleSystem, getPositions, positions, () const)),
    FUNCTION(ParticleSystem_setPositions,
             CONTAINER(ADAPTER(hyx::ParticleSystem, setPositions, set_positions, (PyObject*)))),
    FUNCTION(ParticleSystem_getVelocities, ADAPTER(hyx::ParticleSystem, getVelocities, velocities, () const)),
    FUNCTION(ParticleSystem_setVelocities,
             CONTAINER(ADAPTER(hyx::ParticleSystem, setVelocities, set_velocities, (PyObject*)))),
    FUNCTION(ParticleSystem_getColors, ADAPTER(hyx::ParticleSystem, getColors, particle_colors, () const)),
    FUNCTION(ParticleSystem_setColors,
             CONTAINER(ADAPTER(hyx::ParticleSystem, setColors, set_particle_colors, (PyObject*)))),
    FUNCTION(ParticleSystem_getParticle, ADAPTER(hyx::ParticleSystem, getParticle, particle, (hyx::Index) const)),
    FUNCTION(ParticleSystem_getContacts, ADAPTER(hyx::ParticleSystem, getContacts, contacts, () const)),
    FUNCTION(ParticleSystem_getMass, METHOD(hyx::ParticleSystem, getMass, () const)),
    FUNCTION(ParticleSystem_setParticleRadius, METHOD(hyx::ParticleSystem, setParticleRadius, (hyx::Real))),
    FUNCTION(ParticleSystem_getParticleRadius, METHOD(hyx::ParticleSystem, getParticleRadius, () const)),
    FUNCTION(ParticleSystem_setDensity, METHOD(hyx::ParticleSystem, setDensity, (hyx::Real))),
    FUNCTION(ParticleSystem_getDensity, METHOD(hyx::ParticleSystem, getDensity, () const)),
    FUNCTION(ParticleSystem_setFriction, METHOD(hyx::ParticleSystem, setFriction, (hyx::Real))),
    FUNCTION(ParticleSystem_getFriction, METHOD(hyx::ParticleSystem, getFriction, () const)),
    FUNCTION(ParticleSystem_setGravity, METHOD(hyx::ParticleSystem, setGravity, (hyx::Vec3 const&))),
    FUNCTION(ParticleSystem_getGravity, METHOD(hyx::ParticleSystem, getGravity, () const)),
    FUNCTION(ParticleSystem_setLifetime, METHOD(hyx::ParticleSystem, setLifetime, (hyx::Real))),
    FUNCTION(ParticleSystem_getLifetime, METHOD(hyx::ParticleSystem, getLifetime, () const)),
    FUNCTION(ParticleSystem_setEnable, METHOD(hyx::ParticleSystem, setEnable, (bool))),
    FUNCTION(ParticleSystem_getEnable, METHOD(hyx::ParticleSystem, getEnable, () const)),
    FUNCTION(ParticleSystem_addObstacle, METHOD(hyx::ParticleSystem, addObstacle, (hyx::ParticleObstacle*)),
             METHOD(hyx::ParticleSystem, addObstacle, (hyx::RigidBody*))),
    FUNCTION(ParticleSystem_removeObstacle, METHOD(hyx::ParticleSystem, removeObstacle, (hyx::ParticleObstacle*)),
             METHOD(hyx::ParticleSystem, removeObstacle, (hyx::RigidBody*))),
    FUNCTION(ParticleSystem_step, METHOD(hyx::ParticleSystem, step, (hyx::Real))),
    FUNCTION(delete_ParticleSystem, DELETE(hyx::ParticleSystem)),
    REGISTER(hyx::ParticleSystem, ParticleSystem),
    INIT(ParticleSystem),
    REGISTER(hyx::ParticleObstacle, ParticleObstacle),
    FUNCTION(new_Particle, NEW(hyx::Particle, ())),
    FUNCTION(Particle_id_get, GET(hyx::Particle, id)),
    FUNCTION(Particle_id_set, SET(hyx::Particle, id, (hyx::Index))),
    FUNCTION(Particle_position_get, GET(hyx::Particle, position)),
    FUNCTION(Particle_position_set, SET(hyx::Particle, position, (hyx::Vec3 const&))),
    FUNCTION(Particle_velocity_get, GET(hyx::Particle, velocity)),
    FUNCTION(Particle_velocity_set, SET(hyx::Particle, velocity, (hyx::Vec3 const&))),
    FUNCTION(Particle_rotation_get, GET(hyx::Particle, rotation)),
    FUNCTION(Particle_rotation_set, SET(hyx::Particle, rotation, (hyx::Quat const&))),
    FUNCTION(Particle_radius_get, GET(hyx::Particle, radius)),
    FUNCTION(Particle_radius_set, SET(hyx::Particle, radius, (double))),
    FUNCTION(Particle_mass_get, GET(hyx::Particle, mass)),
    FUNCTION(Particle_mass_set, SET(hyx::Particle, mass, (double))),
    FUNCTION(Particle_age_get, GET(hyx::Particle, age)),
    FUNCTION(Particle_age_set, SET(hyx::Particle, age, (double))),
    FUNCTION(Particle_color_get, GET(hyx::Particle, color)),
    FUNCTION(Particle_color_set, SET(hyx::Particle, color, (hyx::Vec4f const&))),
    FUNCTION(delete_Particle, DELETE(hyx::Particle)),
    REGISTER(hyx::Particle, Particle),
    INIT(Particle),
    FUNCTION(ParticleContact_first_get, GET(hyx::ParticleContact, first)),
    FUNCTION(ParticleContact_first_set, SET(hyx::ParticleContact, first, (hyx::Index))),
    FUNCTION(ParticleContact_second_get, GET(hyx::ParticleContact, second)),
    FUNCTION(ParticleContact_second_set, SET(hyx::ParticleContact, second, (hyx::Index))),
    FUNCTION(ParticleContact_point_get, GET(hyx::ParticleContact, point)),
    FUNCTION(ParticleContact_point_set, SET(hyx::ParticleContact, point, (hyx::Vec3 const&))),
    FUNCTION(ParticleContact_normal_get, GET(hyx::ParticleContact, normal)),
    FUNCTION(ParticleContact_normal_set, SET(hyx::ParticleContact, normal, (hyx::Vec3 const&))),
    FUNCTION(ParticleContact_force_get, GET(hyx::ParticleContact, force)),
    FUNCTION(ParticleContact_force_set, SET(hyx::ParticleContact, force, (double))),
    FUNCTION(delete_ParticleContact, DELETE(hyx::ParticleContact)),
    REGISTER(hyx::ParticleContact, ParticleContact),
    INIT(ParticleContact),
};

} // namespace

ROWS(particle_system_rows);
