// Grids and axes for orientation.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vec3.h"

#include <osg/Vec3>

namespace osg {
class Geode;
class Geometry;
class Group;
class MatrixTransform;
} // namespace osg

namespace hyx {
class Constraint;
class Frame;
class RigidBody;
} // namespace hyx

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

// Grids: `corner` is one corner, the further vectors are the edges from it, metres; the counts are the cells along each
// edge (at least 1, at most 10000 in the plane, 1000 when filled and 500 in space, else
// std::invalid_argument).

/// Grey lines, or with `filled` a checkered surface of quads that takes light and shadow, in the plane of the two
/// edges. Nothing holds the result.
osg::Geometry* createGrid(unsigned int numCellsU, unsigned int numCellsV, osg::Vec3 const& corner,
                          osg::Vec3 const& edgeU, osg::Vec3 const& edgeV, bool filled = false);

/// The same as lines, put under `root` (null: nothing holds the result).
osg::Geode* createGrid(unsigned int numCellsU, unsigned int numCellsV, hyx::Vec3 const& corner, hyx::Vec3 const& edgeU,
                       hyx::Vec3 const& edgeV, osg::Group* root);

/// Lines of a grid in space, `lineWidth` pixels wide. Nothing holds the result.
osg::Geometry* create3DGrid(unsigned int numCellsU, unsigned int numCellsV, unsigned int numCellsW,
                            osg::Vec3 const& corner, osg::Vec3 const& edgeU, osg::Vec3 const& edgeV,
                            osg::Vec3 const& edgeW, float lineWidth);
osg::Geode* create3DGrid(unsigned int numCellsU, unsigned int numCellsV, unsigned int numCellsW,
                         hyx::Vec3 const& corner, hyx::Vec3 const& edgeU, hyx::Vec3 const& edgeV,
                         hyx::Vec3 const& edgeW, float lineWidth);

// Axes: arrows along x (red), y (green) and z (blue), `length` metres long and `scale` times the usual thickness; both
// positive and finite, else std::invalid_argument.

/// Axes at the origin; nothing holds the result.
osg::MatrixTransform* createAxes(float scale = 1.0f, float length = 1.0f);

/// Axes under `root` that follow `frame` (null: the geometry's own frame). Null when `geometry` or `root` is.
osg::MatrixTransform* createAxes(hyxCollide::Geometry* geometry, hyx::Frame* frame, osg::Group* root,
                                 float scale = 1.0f, float length = 1.0f);

/// Axes under `root` that follow `geometry` at `localTransform` in its frame.
osg::MatrixTransform* createAxes(hyxCollide::Geometry* geometry, hyx::AffineMatrix4x4 localTransform, osg::Group* root,
                                 float scale = 1.0f, float length = 1.0f);

/// Axes under `root` that follow `frame` (null: the body's own frame). Null when `body` or `root` is.
osg::MatrixTransform* createAxes(hyx::RigidBody* body, hyx::Frame* frame, osg::Group* root, float scale = 1.0f,
                                 float length = 1.0f);

/// Axes under `root` that follow `body` at `localTransform` in its frame.
osg::MatrixTransform* createAxes(hyx::RigidBody* body, hyx::AffineMatrix4x4 localTransform, osg::Group* root,
                                 float scale = 1.0f, float length = 1.0f);

/// Axes under `root` at a fixed place.
osg::MatrixTransform* createAxes(hyx::AffineMatrix4x4 transform, osg::Group* root, float scale = 1.0f,
                                 float length = 1.0f);

/// Axes at each attachment frame of `constraint`. False when an argument is null or it has none.
bool createAxes(hyx::Constraint* constraint, osg::Group* root, float scale = 1.0f, float length = 1.0f);

} // namespace hyxOSG
