// Colours, shine and opacity of visuals.
#pragma once

#include "platform/hyx/values/vec4f.h"

namespace osg {
class Group;
class Node;
} // namespace osg

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

// Material of a node and what is below it. The material set nearest to a shape wins, also over the materials that come
// with loaded models. With `recursive`, the value is also written into every material below the node. A null
// node, as finders give where there is no visual, is a warning. Colours are red, green, blue, alpha from 0 to 1,
// clamped with a warning; NaN raises std::invalid_argument.

/// The colour under light. Its alpha is the node's opacity, as by setAlpha.
void setDiffuseColor(osg::Node* node, hyx::Vec4f const& color, bool recursive = false);

/// On the visuals of all geometries of `body` under `root`; a warning when there are none.
void setDiffuseColor(hyx::RigidBody* body, hyx::Vec4f const& color, osg::Group* root);

/// On the visual of `geometry` under `root`; a warning when there is none.
void setDiffuseColor(hyxCollide::Geometry* geometry, hyx::Vec4f const& color, osg::Group* root);

/// The colour under ambient light.
void setAmbientColor(osg::Node* node, hyx::Vec4f const& color, bool recursive = false);

/// The colour of the highlight.
void setSpecularColor(osg::Node* node, hyx::Vec4f const& color, bool recursive = false);

/// The sharpness of the highlight, 0 (wide) to 128 (narrow), clamped with a warning.
void setShininess(osg::Node* node, float shininess, bool recursive = false);

/// Opacity, 0 (invisible) to 1. Below 1 the node is drawn after all opaque ones, far to near, without writing depth.
void setAlpha(osg::Node* node, float alpha, bool recursive = false);

/// Whether light number `light` (0 to 7, else std::invalid_argument) shines on the node.
void setEnableLight(bool enable, int light, osg::Node* node);

} // namespace hyxOSG
