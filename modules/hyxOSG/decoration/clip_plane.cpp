// The plane that cuts away part of the scene.
#include "platform/hyxOSG/decoration/clip_plane.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared clip_plane_rows[] = {
    FUNCTION(new_ClipPlane, NEW(hyxOSG::ClipPlane, (hyx::Plane const&)),
             NEW(hyxOSG::ClipPlane, (hyx::Vec3 const&, hyx::Vec3 const&)),
             NEW(hyxOSG::ClipPlane, (double, double, double, double))),
    FUNCTION(delete_ClipPlane, DELETE(hyxOSG::ClipPlane)),
    FUNCTION(ClipPlane_setClipPlane, METHOD(hyxOSG::ClipPlane, setClipPlane, (hyx::Plane const&))),
    FUNCTION(ClipPlane_setPosition, METHOD(hyxOSG::ClipPlane, setPosition, (hyx::Vec3 const&))),
    FUNCTION(ClipPlane_setNormal, METHOD(hyxOSG::ClipPlane, setNormal, (hyx::Vec3 const&))),
    FUNCTION(ClipPlane_setEnable, METHOD(hyxOSG::ClipPlane, setEnable, (bool))),
    FUNCTION(ClipPlane_getEnable, METHOD(hyxOSG::ClipPlane, getEnable, () const)),
    FUNCTION(ClipPlane_getPlane, METHOD(hyxOSG::ClipPlane, getPlane, () const)),
    FUNCTION(ClipPlane_getPosition, METHOD(hyxOSG::ClipPlane, getPosition, () const)),
    FUNCTION(ClipPlane_getNormal, METHOD(hyxOSG::ClipPlane, getNormal, () const)),
    FUNCTION(ClipPlane_setParticleSystemToClip,
             METHOD(hyxOSG::ClipPlane, setParticleSystemToClip, (hyx::ParticleSystem*))),
    FUNCTION(ClipPlane_clipAgainstParticleSystem, METHOD(hyxOSG::ClipPlane, clipAgainstParticleSystem, ())),
    REGISTER(hyxOSG::ClipPlane, ClipPlane),
    INIT(ClipPlane),
};

} // namespace

ROWS(clip_plane_rows);
