// Remembers which scene shows which simulation.
#include "reference/hyxOSG/renderers/simulation_scene.h"

#include <osg/observer_ptr>

#include <map>

namespace hyxOSG {
namespace {

using Scenes = std::map<hyxSDK::Simulation const*, osg::observer_ptr<osg::Group>>;

Scenes& scenes() {
    static Scenes instance;
    return instance;
}

} // namespace

void setSimulationScene(hyxSDK::Simulation const* simulation, osg::Group* root) {
    if (simulation && root)
        scenes()[simulation] = root;
    else
        scenes().erase(simulation);
}

osg::Group* findSimulationScene(hyxSDK::Simulation const* simulation) {
    auto const found = scenes().find(simulation);
    return found == scenes().end() ? nullptr : found->second.get();
}

} // namespace hyxOSG
