// Normals that are smooth across flat edges and sharp at steep ones.
#pragma once

#include <osg/Geometry>

namespace hyxOSG {

/// Radians: a box keeps its edges, a fine sphere is smooth.
inline constexpr double usualCreaseAngle = 0.7;

/// Gives a mesh whose elements name vertices that are there, three floats each, a normal for each vertex: the mean of
/// the faces that meet at the vertex's place, weighted by their angles there, without those that are turned by more
/// than `creaseAngle` radians. Vertices at sharp edges are doubled. Faces become triangles; those without area go.
void setCreaseNormals(osg::Geometry& mesh, double creaseAngle = usualCreaseAngle);

} // namespace hyxOSG
