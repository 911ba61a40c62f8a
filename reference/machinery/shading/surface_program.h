// The shader program of all surfaces: bodies, models, terrain. Its parts are switched on by defines of the state set,
// so that one program object serves all combinations.
#pragma once

#include "platform/hyxOSG/visuals/texture_mode.h"

#include <osg/Node>
#include <osg/Program>
#include <osg/Texture2D>

namespace hyxOSG {

/// The texture unit of a mirrored cube map, beside those that a TextureMode names.
inline constexpr unsigned int cubeMapUnit = 7;

osg::Program& surfaceProgram();

/// Tells the program which texture unit is whose.
void addSurfaceUniforms(osg::StateSet& state);

/// Tells the program, when `node` is drawn with it, that the unit of `mode` holds a texture.
void declareTexture(osg::Node& node, TextureMode mode);

/// Draws what is below `node` with the program. Colour textures that came with a model stay in the picture.
void useSurfaceProgram(osg::Node& node);

/// Lets the program fade a mesh whose x and y go from -1 to 1 into what is behind it, from its middle on.
void declareFading(osg::StateSet& state);

// Parts of a model's material. The fixed functions see none of these textures.

void setNormalMap(osg::StateSet& state, osg::Texture2D& texture);

/// The texture is a factor on the material's emission.
void setGlowMap(osg::StateSet& state, osg::Texture2D& texture);

/// A metal of coloured mirror light or, with 0, a plastic; `roughness` 0 mirrors sharply, 1 not at all. Factors of both
/// are in the blue and green of `texture`, which may be null.
void setMetalRoughness(osg::StateSet& state, float metal, float roughness, osg::Texture2D* texture);

/// Lets the program mirror the cube map in `cubeMapUnit`.
void declareCubeMap(osg::Node& node);

/// Sets the strength of mirrored pictures on `node`; `onlyIfUnset` keeps an earlier value.
void setReflection(osg::Node& node, float coefficient, bool onlyIfUnset);

} // namespace hyxOSG
