// Rows of the functions that trace moving things.
#include "platform/hyxOSG/visuals/trajectories.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxModel/fracture_generator.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "platform/hyxOSG/visuals/fracture_visuals.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Geode>

namespace {

constexpr Declared trajectories_rows[] = {
    FUNCTION(createParticleContactGraph,
             FREE(hyxOSG::createParticleContactGraph, (hyx::ParticleSystem*, osg::Group*, double, double))),
    FUNCTION(createParticleTrajectoriesVisual,
             FREE(hyxOSG::createParticleTrajectoriesVisual, (hyx::ParticleSystem*, osg::Group*, double, hyx::UInt))),
    FUNCTION(createRigidBodyTrajectoriesVisual,
             FREE(hyxOSG::createRigidBodyTrajectoriesVisual,
                  (hyxSDK::Simulation*, osg::Group*, double, hyx::UInt, hyxOSG::ScalarColorMap*), nullptr)),
    FUNCTION(createFrameTrajectoryDrawable,
             FREE(hyxOSG::createFrameTrajectoryDrawable,
                  (hyxSDK::Simulation*, osg::Group*, hyx::UInt, hyx::Vec4f const&), hyx::Vec4f(1, 1, 1, 1))),
    FUNCTION(addRenderCallbackToFracture,
             FREE(hyxOSG::addRenderCallbackToFracture, (hyxModel::FractureGenerator*, osg::Group*))),
    FUNCTION(addRenderColorCallbackToFracture, FREE(hyxOSG::addRenderColorCallbackToFracture,
                                                    (hyxModel::FractureGenerator*, osg::Group*, hyx::Vec4f const&))),
};

} // namespace

ROWS(trajectories_rows);
