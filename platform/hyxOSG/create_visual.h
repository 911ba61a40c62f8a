#pragma once
#include "platform/hyxOSG/particle_system_drawable.h"

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
}

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

/// The visual of one geometry, following it at every update. `evenIfSensor`: draw the geometry even when it is a sensor
/// (else a sensor gets an empty node). `useRenderData`: prefer the render mesh that came with the shape, if any.
GeometryNode * createVisual(hyxCollide::Geometry const * geometry, osg::Group * root, float detailRatio = 1.0f,
                            bool evenIfSensor = false, bool useRenderData = true);

/// One group with a visual for each geometry of `body`.
osg::Group * createVisual(hyx::RigidBody * body, osg::Group * root, float detailRatio = 1.0f,
                          bool evenIfSensor = false);

/// One group with the visuals of all bodies, particle systems and sub-assemblies of `assembly`.
osg::Group * createVisual(hyxSDK::Assembly * assembly, osg::Group * root, float detailRatio = 1.0f,
                          bool evenIfSensor = false);

/// One group with the visuals of everything in `simulation`. Bodies that are added later get theirs at the next step,
/// as long as the group is in a scene.
osg::Group * createVisual(hyxSDK::Simulation * simulation, osg::Group * root, float detailRatio = 1.0f,
                          bool evenIfSensor = false);

/// One drawable for all particles of `particleSystem`. Unknown modes raise std::invalid_argument.
osg::Geode *
createVisual(hyx::ParticleSystem * particleSystem, osg::Group * root,
             ParticleSystemDrawable::ParticleRenderingMode renderingMode = ParticleSystemDrawable::QUAD_SPRITES,
             ParticleSystemDrawable::ParticleShaderMode shaderMode = ParticleSystemDrawable::ROTATION_SPRITES);

/// One group with the emitter's volume (see-through) and a visual for each body that it emits, from then on.
osg::Group * createVisual(hyx::RigidBodyEmitter * emitter, osg::Group * root);

/// One group with the emitter's volume, see-through.
osg::Group * createVisual(hyx::Emitter * emitter, osg::Group * root);

/// The renderer of a terrain, made on first use. The renderer belongs to the terrain's simulation.
TerrainVoxelRenderer * createVisual(hyxSDK::TerrainInstance * terrain, osg::Group * root);

/// Red, green and blue axes of length `detailRatio` metres at the frame, following it.
osg::MatrixTransform * createVisual(hyx::ObserverFrame * observerFrame, osg::Group * root, float detailRatio = 1.0f);

/// Like createVisual for a body, with the place of each geometry's node: element i of the vector is the child index,
/// in the group, of the visual of the body's i-th geometry. The group is null when `body` or `root` is.
std::tuple<osg::Group *, std::vector<std::size_t>> createVisualWithGeometryConnection(hyx::RigidBody * body,
                                                                                      osg::Group * root,
                                                                                      float detailRatio = 1.0f,
                                                                                      bool evenIfSensor = false);

/// Like createVisual for an assembly, where bodies that are copies of one template share the nodes kept in `cache`
/// (null: no sharing beyond the shapes).
osg::Group * createVisualTemplateCaching(hyxSDK::Assembly * assembly, osg::Group * root,
                                         RigidBodyRenderCache * cache = nullptr, float detailRatio = 1.0f,
                                         bool evenIfSensor = false);

/// A listener that keeps the visuals under `root` in step with the simulation that `listener` belongs to: bodies added
/// later get visuals, those that leave lose theirs. `listener` is the one whose simulation is followed and is returned
/// when it has no simulation yet; null arguments give null. The result is owned by the simulation.
hyxSDK::EventListener * createVisualUpdater(hyxSDK::EventListener * listener, osg::Group * root);

} // namespace hyxOSG
