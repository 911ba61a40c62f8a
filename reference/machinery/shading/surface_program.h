// The shader program for surfaces with more than a colour texture. Its parts are switched on by defines of the state
// set, so that one program object serves all combinations.
#pragma once

#include "platform/hyxOSG/visuals/texture_mode.h"

#include <osg/Node>

namespace hyxOSG {

/// The texture unit of a mirrored cube map, beside those that a TextureMode names.
inline constexpr unsigned int cubeMapUnit = 7;

/// Tells the program, when `node` is drawn with it, that the unit of `mode` holds a texture.
void declareTexture(osg::Node& node, TextureMode mode);

/// Draws what is below `node` with the program. Colour textures that came with a model stay in the picture.
void useSurfaceProgram(osg::Node& node);

/// Lets the program mirror the cube map in `cubeMapUnit`.
void declareCubeMap(osg::Node& node);

/// Sets the strength of mirrored pictures on `node`; `onlyIfUnset` keeps an earlier value.
void setReflection(osg::Node& node, float coefficient, bool onlyIfUnset);

} // namespace hyxOSG
