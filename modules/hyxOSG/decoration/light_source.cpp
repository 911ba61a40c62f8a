// The handle to a light.
#include "platform/hyxOSG/decoration/light_source.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared light_source_rows[] = {
    FUNCTION(new_LightSource, NEW(hyxOSG::LightSource, (osg::LightSource*))),
    FUNCTION(delete_LightSource, DELETE(hyxOSG::LightSource)),
    FUNCTION(LightSource_getLightNum, METHOD(hyxOSG::LightSource, getLightNum, () const)),
    FUNCTION(LightSource_setAmbient, METHOD(hyxOSG::LightSource, setAmbient, (hyx::Vec4f const&))),
    FUNCTION(LightSource_setDiffuse, METHOD(hyxOSG::LightSource, setDiffuse, (hyx::Vec4f const&))),
    FUNCTION(LightSource_setSpecular, METHOD(hyxOSG::LightSource, setSpecular, (hyx::Vec4f const&))),
    FUNCTION(LightSource_getAmbient, METHOD(hyxOSG::LightSource, getAmbient, () const)),
    FUNCTION(LightSource_getDiffuse, METHOD(hyxOSG::LightSource, getDiffuse, () const)),
    FUNCTION(LightSource_getSpecular, METHOD(hyxOSG::LightSource, getSpecular, () const)),
    FUNCTION(LightSource_setPosition, METHOD(hyxOSG::LightSource, setPosition, (hyx::Vec4 const&))),
    FUNCTION(LightSource_getPosition, METHOD(hyxOSG::LightSource, getPosition, () const)),
    FUNCTION(LightSource_setDirection, METHOD(hyxOSG::LightSource, setDirection, (hyx::Vec3 const&))),
    FUNCTION(LightSource_getDirection, METHOD(hyxOSG::LightSource, getDirection, () const)),
    FUNCTION(LightSource_setConstantAttenuation, METHOD(hyxOSG::LightSource, setConstantAttenuation, (float))),
    FUNCTION(LightSource_setLinearAttenuation, METHOD(hyxOSG::LightSource, setLinearAttenuation, (float))),
    FUNCTION(LightSource_setQuadraticAttenuation, METHOD(hyxOSG::LightSource, setQuadraticAttenuation, (float))),
    FUNCTION(LightSource_setSpotExponent, METHOD(hyxOSG::LightSource, setSpotExponent, (float))),
    FUNCTION(LightSource_setSpotCutoff, METHOD(hyxOSG::LightSource, setSpotCutoff, (float))),
    FUNCTION(LightSource_getConstantAttenuation, METHOD(hyxOSG::LightSource, getConstantAttenuation, () const)),
    FUNCTION(LightSource_getLinearAttenuation, METHOD(hyxOSG::LightSource, getLinearAttenuation, () const)),
    FUNCTION(LightSource_getQuadraticAttenuation, METHOD(hyxOSG::LightSource, getQuadraticAttenuation, () const)),
    FUNCTION(LightSource_getSpotExponent, METHOD(hyxOSG::LightSource, getSpotExponent, () const)),
    FUNCTION(LightSource_getSpotCutoff, METHOD(hyxOSG::LightSource, getSpotCutoff, () const)),
    REGISTER(hyxOSG::LightSource, LightSource),
    INIT(LightSource),
};

} // namespace

ROWS(light_source_rows);
