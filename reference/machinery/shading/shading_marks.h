// Tells the shading program what it cannot see by itself: which nodes are not lit and which receive no shadow.
#pragma once

#include "platform/hyxOSG/application/example_application.h"

#include <osg/Node>

namespace hyxOSG::decorator {

/// Node mask bits of what has any part in the shadows.
inline constexpr osg::Node::NodeMask shadowMasks =
    ExampleApplication::CASTS_SHADOWS_MASK | ExampleApplication::RECIEVES_SHADOWS_MASK;

/// Brings the program's uniforms on a node and everything below it in step with node masks and lighting modes. Cheap
/// enough for every frame: it changes a state set only when something has changed.
/// \param castersReceive false: what casts shadows receives none
void markShading(osg::Node& node, bool castersReceive = true);

} // namespace hyxOSG::decorator
