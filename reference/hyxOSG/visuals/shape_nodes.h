// The look of collision shapes: one mesh for all shapes of the same form, fitted by a transform.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <osg/Node>
#include <osg/ref_ptr>

namespace hyxOSG {

/// Half the side of the square that stands for an endless plane, metres.
inline constexpr double planeHalfSide = 50;

/// A node with the shape in its own coordinates. The meshes below it are shared; the node itself is new.
/// \throws std::invalid_argument for a detail ratio that is not positive and finite
osg::ref_ptr<osg::Node> createShapeNode(hyxCollide::Shape const& shape, float detailRatio);

} // namespace hyxOSG
