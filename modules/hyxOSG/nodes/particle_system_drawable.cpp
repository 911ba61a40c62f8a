// Rows of ParticleSystemDrawable.
#include "platform/hyxOSG/nodes/particle_system_drawable.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/particles/particle_system.h"

#include <osg/RenderInfo>

namespace {

using hyxOSG::ParticleSystemDrawable;

constexpr Declared particle_system_drawable_rows[] = {
    FUNCTION(new_ParticleSystemDrawable,
             NEW(hyxOSG::ParticleSystemDrawable,
                 (hyx::ParticleSystem*, hyxOSG::ParticleSystemDrawable::ParticleRenderingMode,
                  hyxOSG::ParticleSystemDrawable::ParticleShaderMode),
                 ParticleSystemDrawable::QUAD_SPRITES, ParticleSystemDrawable::ROTATION_SPRITES)),
    FUNCTION(ParticleSystemDrawable_getParticleShaderMode,
             METHOD(hyxOSG::ParticleSystemDrawable, getParticleShaderMode, () const)),
    FUNCTION(ParticleSystemDrawable_setParticleShaderMode,
             METHOD(hyxOSG::ParticleSystemDrawable, setParticleShaderMode,
                    (hyxOSG::ParticleSystemDrawable::ParticleShaderMode))),
    FUNCTION(ParticleSystemDrawable_setEnable, METHOD(hyxOSG::ParticleSystemDrawable, setEnable, (bool))),
    FUNCTION(ParticleSystemDrawable_getEnable, METHOD(hyxOSG::ParticleSystemDrawable, getEnable, () const)),
    FUNCTION(ParticleSystemDrawable_getParticleSystem,
             METHOD(hyxOSG::ParticleSystemDrawable, getParticleSystem, () const)),
    FUNCTION(ParticleSystemDrawable_setAllowedRenderMode,
             STATIC(hyxOSG::ParticleSystemDrawable, setAllowedRenderMode,
                    (hyxOSG::ParticleSystemDrawable::ParticleRenderingMode))),
    FUNCTION(ParticleSystemDrawable_getAllowedRenderMode,
             STATIC(hyxOSG::ParticleSystemDrawable, getAllowedRenderMode, ())),
    FUNCTION(ParticleSystemDrawable_cloneType, METHOD(hyxOSG::ParticleSystemDrawable, cloneType, () const)),
    FUNCTION(ParticleSystemDrawable_clone, METHOD(hyxOSG::ParticleSystemDrawable, clone, (osg::CopyOp const&) const)),
    FUNCTION(ParticleSystemDrawable_isSameKindAs,
             METHOD(hyxOSG::ParticleSystemDrawable, isSameKindAs, (osg::Object const*) const)),
    FUNCTION(ParticleSystemDrawable_libraryName, METHOD(hyxOSG::ParticleSystemDrawable, libraryName, () const)),
    FUNCTION(ParticleSystemDrawable_className, METHOD(hyxOSG::ParticleSystemDrawable, className, () const)),
    FUNCTION(ParticleSystemDrawable_drawImplementation,
             METHOD(hyxOSG::ParticleSystemDrawable, drawImplementation, (osg::RenderInfo&) const)),
    REGISTER(hyxOSG::ParticleSystemDrawable, ParticleSystemDrawable),
    INIT(ParticleSystemDrawable),
};

} // namespace

ROWS(particle_system_drawable_rows);
