// From a shadow method to the technique that makes it.
#pragma once

#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "reference/machinery/shading/shading_program.h"

#include <osgShadow/ShadowTechnique>

namespace hyxOSG::decorator {

/// \throws std::invalid_argument for a value that is no method
void requireShadowMethod(SceneDecorator::ShadowMethod method);

/// What shadow maps may cost.
struct ShadowMapCost {
    unsigned int size;        ///< width and height in texels
    unsigned int casterLimit; ///< as of SceneDecorator::setShadowCasterLimit
};

/// The technique for a method; null for NO_SHADOWS.
/// \param shading the lights and highlights; its shadow fields are filled in here
osg::ref_ptr<osgShadow::ShadowTechnique> createShadowTechnique(SceneDecorator::ShadowMethod method,
                                                               ShadingOptions shading, ShadowMapCost cost,
                                                               osg::LightSource* light);

} // namespace hyxOSG::decorator
