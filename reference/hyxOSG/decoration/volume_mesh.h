// The mesh that a shadow volume is drawn with.
#pragma once

#include <osg/Drawable>
#include <osg/Geometry>

namespace hyxOSG::decorator {

/// A closed prism for every triangle of a drawable. A vertex program pulls the prisms of the triangles that face the
/// light away from it and folds the others up: a vertex with w = 1 stays, one with w = 0 goes to infinity; the normal
/// is the triangle's and the first texture coordinate its middle. Null for a drawable without triangles.
osg::ref_ptr<osg::Geometry> createVolumeMesh(osg::Drawable& drawable);

} // namespace hyxOSG::decorator
