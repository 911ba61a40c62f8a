// Meshes of collision shapes that are given by their points.
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>

namespace hyxCollide {
class HeightField;
class Trimesh;
} // namespace hyxCollide

namespace hyxOSG {

/// The triangles with normals that are smooth but for sharp edges, and texture coordinates projected along the main
/// axis of each normal.
osg::ref_ptr<osg::Geometry> trimeshSurface(hyxCollide::Trimesh const& mesh);

/// The surface with its texture once across.
osg::ref_ptr<osg::Geometry> heightFieldSurface(hyxCollide::HeightField const& field);

} // namespace hyxOSG
