// Finding the visual of a thing in a scene.
#pragma once

#include <cstddef>

namespace osg {
class Group;
} // namespace osg

namespace osgText {
class Text;
} // namespace osgText

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {
class FrameTrajectoryDrawable;
class GeometryNode;
class ParticleSystemDrawable;
class RigidBodySystemDrawable;

// Searches in the tree under `root`, first match in depth-first order. Results are borrowed; null when nothing is found
// or an argument is null. What an application's `createVisual` and models made is under its `getRoot`, not
// `getSceneRoot`, which is for a script's own nodes.

/// The visual of `geometry`.
GeometryNode* findGeometryNode(hyxCollide::Geometry const* geometry, osg::Group* root);

/// The first drawable of a particle system.
ParticleSystemDrawable* findParticleSystemDrawable(osg::Group* root);

/// The first drawable of a system of bodies.
RigidBodySystemDrawable* findRigidBodySystemDrawable(osg::Group* root);

/// The first drawable of frame trajectories.
FrameTrajectoryDrawable* findFrameTrajectoryDrawable(osg::Group* root);

/// The text number `index` (from 0) that addText attached to the visual of `geometry`.
osgText::Text* findText(hyxCollide::Geometry const* geometry, osg::Group* root, std::size_t index = 0);

} // namespace hyxOSG
