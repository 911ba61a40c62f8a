// From a shadow method to the technique that makes it.
#pragma once

#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "reference/machinery/shading/shading_program.h"

#include <osgShadow/ShadowTechnique>

namespace hyxOSG::decorator {

/// \throws std::invalid_argument for a value that is no method
void requireShadowMethod(SceneDecorator::ShadowMethod method);

/// The technique for a method; null for NO_SHADOWS.
/// \param shading the lights and highlights; its shadow fields are filled in here
osg::ref_ptr<osgShadow::ShadowTechnique> createShadowTechnique(SceneDecorator::ShadowMethod method,
                                                               ShadingOptions shading, unsigned int mapSize,
                                                               osg::LightSource* light);

} // namespace hyxOSG::decorator
