// Where the things of a simulation are drawn, for renderers that are given no group.
#pragma once

#include <osg/Group>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

// The application that shows a simulation says where; null ends it. The root is not kept alive.
void setSimulationScene(hyxSDK::Simulation const* simulation, osg::Group* root);

// The root for a simulation, or null.
osg::Group* findSimulationScene(hyxSDK::Simulation const* simulation);

} // namespace hyxOSG
