// Emitters of grains and bodies.
#include "platform/hyx/particles/emitter.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/particles/rigid_body_emitter.h"

namespace {

PyObject* bodies(hyx::RigidBodyEmitter const& self) {
    return vocabulary::to_shared_list(self.getBodies());
}

constexpr Declared emitter_rows[] = {
    FUNCTION(new_Emitter, NEW(hyx::Emitter, (hyx::ParticleSystem*), nullptr)),
    FUNCTION(Emitter_setParticleSystem, METHOD(hyx::Emitter, setParticleSystem, (hyx::ParticleSystem*))),
    FUNCTION(Emitter_getParticleSystem, SHARED(METHOD(hyx::Emitter, getParticleSystem, () const))),
    FUNCTION(Emitter_setPosition, METHOD(hyx::Emitter, setPosition, (hyx::Vec3 const&))),
    FUNCTION(Emitter_getPosition, METHOD(hyx::Emitter, getPosition, () const)),
    FUNCTION(Emitter_setHalfExtents, METHOD(hyx::Emitter, setHalfExtents, (hyx::Vec3 const&))),
    FUNCTION(Emitter_getHalfExtents, METHOD(hyx::Emitter, getHalfExtents, () const)),
    FUNCTION(Emitter_setVelocity, METHOD(hyx::Emitter, setVelocity, (hyx::Vec3 const&))),
    FUNCTION(Emitter_getVelocity, METHOD(hyx::Emitter, getVelocity, () const)),
    FUNCTION(Emitter_setRate, METHOD(hyx::Emitter, setRate, (hyx::Real))),
    FUNCTION(Emitter_getRate, METHOD(hyx::Emitter, getRate, () const)),
    FUNCTION(Emitter_setMaximumEmitted, METHOD(hyx::Emitter, setMaximumEmitted, (hyx::UInt))),
    FUNCTION(Emitter_getMaximumEmitted, METHOD(hyx::Emitter, getMaximumEmitted, () const)),
    FUNCTION(Emitter_getNumEmitted, METHOD(hyx::Emitter, getNumEmitted, () const)),
    FUNCTION(Emitter_setSeed, METHOD(hyx::Emitter, setSeed, (hyx::UInt))),
    FUNCTION(Emitter_setEnable, METHOD(hyx::Emitter, setEnable, (bool))),
    FUNCTION(Emitter_getEnable, METHOD(hyx::Emitter, getEnable, () const)),
    FUNCTION(Emitter_step, METHOD(hyx::Emitter, step, (hyx::Real))),
    FUNCTION(delete_Emitter, DELETE(hyx::Emitter)),
    REGISTER(hyx::Emitter, Emitter),
    INIT(Emitter),
    FUNCTION(new_RigidBodyEmitter, NEW(hyx::RigidBodyEmitter, ())),
    FUNCTION(RigidBodyEmitter_setSphereTemplate, METHOD(hyx::RigidBodyEmitter, setSphereTemplate, (hyx::Real))),
    FUNCTION(RigidBodyEmitter_setBoxTemplate, METHOD(hyx::RigidBodyEmitter, setBoxTemplate, (hyx::Vec3 const&))),
    FUNCTION(RigidBodyEmitter_getBodies, ADAPTER(hyx::RigidBodyEmitter, getBodies, bodies, () const)),
    FUNCTION(delete_RigidBodyEmitter, DELETE(hyx::RigidBodyEmitter)),
    REGISTER(hyx::RigidBodyEmitter, RigidBodyEmitter),
    INIT(RigidBodyEmitter),
};

} // namespace

ROWS(emitter_rows);
