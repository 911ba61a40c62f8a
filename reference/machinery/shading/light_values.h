// The values of a light, apart from the light that nodes and scripts hold.
#pragma once

#include <osg/Light>

namespace hyxOSG {

/// All but the number.
inline void copyLight(osg::Light const& from, osg::Light& to) {
    to.setAmbient(from.getAmbient());
    to.setDiffuse(from.getDiffuse());
    to.setSpecular(from.getSpecular());
    to.setPosition(from.getPosition());
    to.setDirection(from.getDirection());
    to.setConstantAttenuation(from.getConstantAttenuation());
    to.setLinearAttenuation(from.getLinearAttenuation());
    to.setQuadraticAttenuation(from.getQuadraticAttenuation());
    to.setSpotExponent(from.getSpotExponent());
    to.setSpotCutoff(from.getSpotCutoff());
}

} // namespace hyxOSG
