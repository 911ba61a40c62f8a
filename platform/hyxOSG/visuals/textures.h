// Pictures on visuals.
#pragma once

#include "platform/hyxOSG/visuals/texture_mode.h"

#include <string>

namespace osg {
class Group;
class Node;
class Texture2D;
} // namespace osg

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {
class GeometryNode;
class Texture2D;

/// A texture from an image file, smoothed and mip-mapped. The same file gives the same texture as long as somebody
/// holds it. Null, with the reason in the notification stream, when the file is missing or damaged.
osg::Texture2D* createTexture(std::string const& file);

// setTexture: `repeat` tiles the picture outside 0..1 (else its edge is drawn out), `mode` says what the texture does,
// the scales say how many times the picture fits along s and t. False, and nothing changed, when the image cannot be
// read, there is no visual, an argument is null, or a scale is zero or not finite. An unknown mode raises
// std::invalid_argument.

/// On the visual of `geometry` under `root`.
bool setTexture(hyxCollide::Geometry const* geometry, osg::Group* root, std::string const& file, bool repeat = false,
                TextureMode mode = DIFFUSE_TEXTURE);

/// On the visuals of all geometries of `body` under `root`.
bool setTexture(hyx::RigidBody const* body, osg::Group* root, std::string const& file, bool repeat = false,
                TextureMode mode = DIFFUSE_TEXTURE);

/// On any node, from an image file.
bool setTexture(osg::Node* node, std::string const& file, bool repeat = false, TextureMode mode = DIFFUSE_TEXTURE,
                float scaleS = 1.0f, float scaleT = 1.0f);

/// On any node. The wrap mode of `texture` itself is set.
bool setTexture(osg::Node* node, osg::Texture2D* texture, bool repeat = false, TextureMode mode = DIFFUSE_TEXTURE,
                float scaleS = 1.0f, float scaleT = 1.0f);
bool setTexture(osg::Node* node, Texture2D* texture, bool repeat = false, TextureMode mode = DIFFUSE_TEXTURE,
                float scaleS = 1.0f, float scaleT = 1.0f);
bool setTexture(GeometryNode* node, Texture2D* texture, bool repeat = false, TextureMode mode = DIFFUSE_TEXTURE,
                float scaleS = 1.0f, float scaleT = 1.0f);

} // namespace hyxOSG
