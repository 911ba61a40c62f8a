// Where the things of a simulation are drawn, for renderers that are given no group.
#pragma once

#include "platform/hyx/values/vec3.h"

#include <osg/Group>
#include <osg/Matrixd>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

// The application that shows a simulation says where; null ends it. The root is not kept alive.
void setSimulationScene(hyxSDK::Simulation const* simulation, osg::Group* root);

// The root for a simulation, or null.
osg::Group* findSimulationScene(hyxSDK::Simulation const* simulation);

// From the frame of a simulation to that of the picture, which an application may have moved; the identity where no
// scene shows it.
osg::Matrixd pictureOf(hyxSDK::Simulation const* simulation);

// A point of the simulation, where it is drawn, and back.
hyx::Vec3 toPicture(hyxSDK::Simulation const* simulation, hyx::Vec3 const& point);
hyx::Vec3 toSimulation(hyxSDK::Simulation const* simulation, hyx::Vec3 const& point);

} // namespace hyxOSG
