// What a plane leaves to be seen of the inside of a solid body.
#pragma once

#include <osg/Geometry>
#include <osg/Plane>

namespace hyxOSG {

/// The face where `plane` cuts a mesh that is closed and turned outwards, in the mesh's coordinates. It looks away from
/// the side that the plane's normal points to. Null where the plane passes by.
osg::ref_ptr<osg::Geometry> sectionOf(osg::Geometry const& mesh, osg::Plane const& plane);

} // namespace hyxOSG
