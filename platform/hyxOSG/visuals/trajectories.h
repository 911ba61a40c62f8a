// The traces of moving things, and the contacts between grains.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec4f.h"

namespace osg {
class Geode;
class Group;
} // namespace osg

namespace hyx {
class ParticleSystem;
} // namespace hyx

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {
class ScalarColorMap;

// Lines that grow at every update. Results are borrowed, owned by `root`; a null object or root gives null.

/// Lines between particles that touch. Red is drawn for a force of `maxForce` newton and more, blue for none; contacts
/// below `minForce` are left out. Needs 0 <= minForce < maxForce, else std::invalid_argument.
osg::Geode* createParticleContactGraph(hyx::ParticleSystem* particleSystem, osg::Group* root, double minForce,
                                       double maxForce);

/// The ways of all particles. A point is added when `interval` seconds of simulation time have passed since the last;
/// each line keeps its newest `numPoints` points. Needs interval >= 0 and numPoints >= 2, else std::invalid_argument.
osg::Geode* createParticleTrajectoriesVisual(hyx::ParticleSystem* particleSystem, osg::Group* root, double interval,
                                             hyx::UInt numPoints);

/// The ways of all bodies of `simulation`, coloured by speed through `colorMap` (null: one colour per body).
osg::Geode* createRigidBodyTrajectoriesVisual(hyxSDK::Simulation* simulation, osg::Group* root, double interval,
                                              hyx::UInt numPoints, ScalarColorMap* colorMap = nullptr);

/// A drawable for the ways of frames that are added to it (see FrameTrajectoryDrawable), each keeping its newest
/// `numPoints` points, one a step. The observer frames that `simulation` has now are added at once.
osg::Geode* createFrameTrajectoryDrawable(hyxSDK::Simulation* simulation, osg::Group* root, hyx::UInt numPoints,
                                          hyx::Vec4f const& color = hyx::Vec4f(1, 1, 1, 1));

} // namespace hyxOSG
