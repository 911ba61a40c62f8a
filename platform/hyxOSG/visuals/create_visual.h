// Visuals for the things of a simulation.
#pragma once

#include "platform/hyxOSG/nodes/particle_system_drawable.h"

#include <cstddef>
#include <tuple>
#include <vector>

namespace osg {
class Geode;
class Group;
class MatrixTransform;
} // namespace osg

namespace hyx {
class Emitter;
class ObserverFrame;
class ParticleSystem;
class RigidBody;
class RigidBodyEmitter;
} // namespace hyx

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxSDK {
class Assembly;
class EventListener;
class Simulation;
class TerrainInstance;
} // namespace hyxSDK

namespace hyxOSG {
class GeometryNode;
class RigidBodyRenderCache;
class TerrainVoxelRenderer;

// Visuals of simulation objects. Every one is put under `root`, which owns it; the result is borrowed. A null object
// or a null root gives null. `detailRatio` multiplies the number of facets of round shapes (1 = 24 around, at least 6);
// it must be positive and finite, else std::invalid_argument.

/// The visual of one geometry, following it at every update. `evenIfSensor`: draw the shape even when the geometry is a
/// sensor (else a sensor gets an empty node). `autoRemove`: the visual leaves the scene together with its geometry.
GeometryNode* createVisual(hyxCollide::Geometry const* geometry, osg::Group* root, float detailRatio = 1.0f,
                           bool evenIfSensor = false, bool autoRemove = true);

/// One group with a visual for each geometry of `body`.
osg::Group* createVisual(hyx::RigidBody* body, osg::Group* root, float detailRatio = 1.0f, bool evenIfSensor = false);

/// One group with the visuals of all bodies, particle systems and sub-assemblies of `assembly`.
osg::Group* createVisual(hyxSDK::Assembly* assembly, osg::Group* root, float detailRatio = 1.0f,
                         bool evenIfSensor = false);

/// One group with the visuals of everything in `simulation`. Bodies and geometries that are added later get theirs, and
/// bodies that leave lose theirs, as long as the group exists.
osg::Group* createVisual(hyxSDK::Simulation* simulation, osg::Group* root, float detailRatio = 1.0f,
                         bool evenIfSensor = false);

/// One drawable for all particles of `particleSystem`. Unknown modes raise std::invalid_argument.
osg::Geode* createVisual(
    hyx::ParticleSystem* particleSystem, osg::Group* root,
    ParticleSystemDrawable::ParticleRenderingMode renderingMode = ParticleSystemDrawable::QUAD_SPRITES,
    ParticleSystemDrawable::ParticleShaderMode shaderMode = ParticleSystemDrawable::ROTATION_SPRITES);

/// One group with the emitter's volume (see-through) and a visual for each body that it emits, from then on.
osg::Group* createVisual(hyx::RigidBodyEmitter* emitter, osg::Group* root);

/// One group with the emitter's volume, see-through.
osg::Group* createVisual(hyx::Emitter* emitter, osg::Group* root);

/// The renderer of a terrain, made on first use. It belongs to the terrain's simulation, or to `root` where there is
/// none yet.
TerrainVoxelRenderer* createVisual(hyxSDK::TerrainInstance* terrain, osg::Group* root);

/// Red, green and blue axes of `length` metres at the frame, following it.
osg::MatrixTransform* createVisual(hyx::ObserverFrame* observerFrame, osg::Group* root, float length = 1.0f);

/// Like createVisual for a body, with the place of each geometry's node: element i of the vector is the child index,
/// in the group, of the visual of the body's i-th geometry. The group is null when `body` or `root` is.
std::tuple<osg::Group*, std::vector<std::size_t>> createVisualWithGeometryConnection(hyx::RigidBody* body,
                                                                                     osg::Group* root,
                                                                                     float detailRatio = 1.0f,
                                                                                     bool evenIfSensor = false);

/// Like createVisual for an assembly, where bodies that are copies of one template share the nodes kept in `cache`
/// (null: no sharing beyond the shapes).
osg::Group* createVisualTemplateCaching(hyxSDK::Assembly* assembly, osg::Group* root,
                                        RigidBodyRenderCache* cache = nullptr, float detailRatio = 1.0f,
                                        bool evenIfSensor = false);

/// A listener that gives visuals under `root` to the bodies that enter the simulation from now on, `listener`'s doing
/// or not, and takes them away when they leave. It joins the simulation of `listener`, which then owns it. A `listener`
/// in no simulation is wrapped instead: add the result in its place, and it calls `listener` in each step. Null
/// arguments give null.
hyxSDK::EventListener* createVisualUpdater(hyxSDK::EventListener* listener, osg::Group* root);

} // namespace hyxOSG
