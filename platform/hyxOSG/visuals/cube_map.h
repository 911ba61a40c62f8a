// Pictures of the surroundings: skies and reflections.
#pragma once

#include "platform/hyx/values/vector.h"

#include <osg/Image>
#include <osg/ref_ptr>

#include <string>

namespace osg {
class Geode;
class Node;
class TextureCubeMap;
} // namespace osg

namespace hyxOSG {

/// Six pictures of the surroundings as seen from inside, in the order posx, negx, posy, negy, posz, negz: posx is the
/// view along the world's +x, posy the one upwards (+z), negz the one along +y.
using ImageList = hyx::Vector<osg::ref_ptr<osg::Image>>;

/// Reads the six files `prefix` + posx, negx, posy, negy, posz, negz + `extension` (with or without its dot) into
/// `images`, replacing its content. False, with an empty list and the reason in the notification stream, when one is
/// missing or damaged, or they are not square and of one size.
bool loadCubeMapImages(std::string const& prefix, std::string const& extension,
                       hyx::Vector<osg::ref_ptr<osg::Image>>& images);

/// A cube map of six images; null unless there are six of one square size. Nothing holds the result.
osg::TextureCubeMap* createTextureCubeMap(hyx::Vector<osg::ref_ptr<osg::Image>>& images);

/// A cube map from files, see loadCubeMapImages; null when they cannot be read.
osg::TextureCubeMap* createTextureCubeMap(std::string const& prefix, std::string const& extension);

/// A sphere around the origin, seen from inside, with the pictures of the surroundings on it, unlit and called `name`.
/// `radius` in metres; `detailRatio` multiplies its facets. Null unless there are six images of one square size.
/// Nothing holds the result.
osg::Geode* createSkySphere(std::string const& name, hyx::Vector<osg::ref_ptr<osg::Image>>& images, float radius,
                            float detailRatio = 1.0f);

/// Lets the surface of `node` mirror the cube map read from files, see loadCubeMapImages; strength by
/// setEnvMapReflectionCoefficient, 0.5 at first. False, and nothing changed, for null or files that cannot be read.
bool setCubeMapTexture(osg::Node* node, std::string const& prefix, std::string const& extension = ".png");

/// How much of the mirrored surroundings (cube map or sphere map texture) shows, from 0 (none) to 1 (a mirror); values
/// outside are clamped, nothing for a null node. NaN raises std::invalid_argument.
void setEnvMapReflectionCoefficient(osg::Node* node, float coefficient);

} // namespace hyxOSG
