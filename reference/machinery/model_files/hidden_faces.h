// Leaves out the faces of a model that nobody can see.
#pragma once

#include <osg/Node>

namespace hyxOSG {

/// Draws only the faces that look here of all closed, opaque meshes that have no state of their own.
void leaveOutHiddenFaces(osg::Node& model);

} // namespace hyxOSG
