// Finds meshes of which one only ever sees the outside.
#pragma once

#include <osg/Geometry>
#include <osg/StateSet>

namespace hyxOSG {

/// Whether triangles alone make up closed surfaces, each turned outwards, so that what looks away is always hidden by
/// what looks here. Vertices at one place count as one: seams of textures do not open a mesh.
bool isClosedOutwards(osg::Geometry const& mesh);

/// The state that leaves out faces that look away; one for all meshes, not to be changed.
osg::StateSet* frontFacesOnly();

} // namespace hyxOSG
