// Leaves out the parts of large closed meshes that look away, before their corners are worked out.
#pragma once

#include <osg/Geometry>

namespace hyxOSG {

/// Where only faces that look here are drawn (osg::CullFace), patches of a large closed mesh that wholly look away,
/// from the eye or from a light, are not sent any more: the picture is the same. Triangles and vertices stay as they
/// are, and are to be in an order in which neighbours follow each other (`orderTriangles`). A mesh whose places or
/// triangles change later is drawn whole, so are small ones and those that are more than one run of triangles. Indices
/// must be within the arrays.
void drawFacingPatches(osg::Geometry& mesh);

} // namespace hyxOSG
