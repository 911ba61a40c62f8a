// Meshes of the basic shapes, one for each combination of form and fineness.
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>

namespace hyxOSG {

/// Facets around a round shape for a detail ratio.
/// \throws std::invalid_argument unless the ratio is positive and finite
unsigned int segmentsForDetail(float detailRatio);

// All have their centre at the origin; round ones have their axis along y.

/// Half sides of 1.
osg::ref_ptr<osg::Geometry> unitBoxMesh();
/// Radius 1.
osg::ref_ptr<osg::Geometry> unitSphereMesh(unsigned int segments);

/// The scale at which the corners of the unit sphere's mesh lie as far outside the true sphere as the middles of its
/// faces lie inside.
double evenSphereScale(unsigned int segments);
/// Radius 1 at the lower end, `topRatio` at the upper one, half height 1. A cylinder has `topRatio` 1, a full cone 0.
osg::ref_ptr<osg::Geometry> unitConeMesh(unsigned int segments, float topRatio);
/// Like a cone, with a hole that leaves a wall of `wallRatio` (0 to 1) times the outer radius at both ends.
osg::ref_ptr<osg::Geometry> unitTubeMesh(unsigned int segments, float topRatio, float wallRatio);
/// Radius 1 and a straight part of half the length `halfLength`.
osg::ref_ptr<osg::Geometry> unitCapsuleMesh(unsigned int segments, float halfLength);
/// A square in the plane z = 0 with half sides of 1, seen from both sides, its texture repeated `tiles` times.
osg::ref_ptr<osg::Geometry> unitSquareMesh(float tiles);

} // namespace hyxOSG
