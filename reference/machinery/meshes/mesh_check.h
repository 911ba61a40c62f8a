// Finds meshes that a walk over their triangles would leave its arrays with.
#pragma once

#include <osg/Geometry>

#include <string>

namespace hyxOSG {

/// What is wrong with a mesh, as "has ..."; "" when each element names a vertex that is there, triangles have
/// three corners, arrays with a value for each vertex have as many, and all numbers are finite.
std::string meshFault(osg::Geometry const& mesh);

/// The first fault in a scene, "" for none; also of images without all their pixels, transforms that are not numbers,
/// and scenes deeper than a walk has stack for.
std::string sceneFault(osg::Node& scene);

} // namespace hyxOSG
