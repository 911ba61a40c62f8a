// Remembers which scene shows which simulation, and where.
#include "reference/machinery/viewing/simulation_scene.h"

#include "reference/machinery/meshes/conversions.h"

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

osg::Matrixd pictureOf(hyxSDK::Simulation const* simulation) {
    osg::Group const* scene = findSimulationScene(simulation);
    osg::NodePathList const paths = scene ? scene->getParentalNodePaths() : osg::NodePathList();
    return paths.empty() ? osg::Matrixd() : osg::computeLocalToWorld(paths.front());
}

hyx::Vec3 toPicture(hyxSDK::Simulation const* simulation, hyx::Vec3 const& point) {
    return toHyx(toOsg(point) * pictureOf(simulation));
}

hyx::Vec3 toSimulation(hyxSDK::Simulation const* simulation, hyx::Vec3 const& point) {
    return toHyx(toOsg(point) * osg::Matrixd::inverse(pictureOf(simulation)));
}

} // namespace hyxOSG
