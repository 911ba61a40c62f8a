// Rows of the functions that make visuals.
#include "platform/hyxOSG/visuals/create_visual.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/observer_frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/emitter.h"
#include "platform/hyx/particles/rigid_body_emitter.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"
#include "platform/hyxOSG/visuals/rigid_body_render_cache.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSDK/terrain_instance.h"

#include <osg/Geode>
#include <osg/MatrixTransform>

namespace {

using hyxOSG::ParticleSystemDrawable;

constexpr Declared create_visual_rows[] = {
    FUNCTION(
        createVisual,
        FREE(hyxOSG::createVisual, (hyxCollide::Geometry const*, osg::Group*, float, bool, bool), 1.0f, false, true),
        FREE(hyxOSG::createVisual, (hyx::RigidBody*, osg::Group*, float, bool), 1.0f, false),
        FREE(hyxOSG::createVisual, (hyxSDK::Assembly*, osg::Group*, float, bool), 1.0f, false),
        FREE(hyxOSG::createVisual, (hyxSDK::Simulation*, osg::Group*, float, bool), 1.0f, false),
        FREE(hyxOSG::createVisual,
             (hyx::ParticleSystem*, osg::Group*, hyxOSG::ParticleSystemDrawable::ParticleRenderingMode,
              hyxOSG::ParticleSystemDrawable::ParticleShaderMode),
             ParticleSystemDrawable::QUAD_SPRITES, ParticleSystemDrawable::ROTATION_SPRITES),
        FREE(hyxOSG::createVisual, (hyx::RigidBodyEmitter*, osg::Group*)),
        FREE(hyxOSG::createVisual, (hyx::Emitter*, osg::Group*)),
        FREE(hyxOSG::createVisual, (hyxSDK::TerrainInstance*, osg::Group*)),
        FREE(hyxOSG::createVisual, (hyx::ObserverFrame*, osg::Group*, float), 1.0f)),
    FUNCTION(createVisualWithGeometryConnection, FREE(hyxOSG::createVisualWithGeometryConnection,
                                                      (hyx::RigidBody*, osg::Group*, float, bool), 1.0f, false)),
    FUNCTION(createVisualTemplateCaching,
             FREE(hyxOSG::createVisualTemplateCaching,
                  (hyxSDK::Assembly*, osg::Group*, hyxOSG::RigidBodyRenderCache*, float, bool), nullptr, 1.0f, false)),
    FUNCTION(createVisualUpdater, FREE(hyxOSG::createVisualUpdater, (hyxSDK::EventListener*, osg::Group*))),
};

} // namespace

ROWS(create_visual_rows);
