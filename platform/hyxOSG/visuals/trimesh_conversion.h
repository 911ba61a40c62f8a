// Collision meshes from scene graphs.
#pragma once

namespace osg {
class Node;
} // namespace osg

namespace hyxCollide {
class Trimesh;
} // namespace hyxCollide

namespace hyxOSG {

/// A collision mesh of all triangles under `node`, in the node's coordinates with the transforms below it applied.
/// Nothing holds the result until it becomes part of a geometry. Null for null and when there is no triangle.
hyxCollide::Trimesh* createTrimesh(osg::Node* node);

} // namespace hyxOSG
