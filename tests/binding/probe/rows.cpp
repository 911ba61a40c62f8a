// What tests need of the library and scripts do not get: objects that only the library makes, and native functions.
#include "binding/vocabulary/rows.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/decoration/panel.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Group>

#include <stdexcept>
#include <string>

namespace {

hyxOSG::Panel* makePanel(osg::Group* hud, void const* key) {
    return new hyxOSG::Panel(hud, key);
}

void deletePanel(hyxOSG::Panel* panel) {
    delete panel;
}

// The same object without a claim on it: what is seen of it once its owner is gone.
hyx::Referenced* borrow(hyx::Referenced* object) {
    return object;
}

osg::Node* borrowNode(osg::Node* node) {
    return node;
}

// Leaves a body with the name of the scene, and the group of that name.
osg::Group* build(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application, char const* name) {
    if (simulation != application->getSimulation())
        throw std::logic_error("the scene was given another simulation");
    simulation->add(hyx::ref_ptr<hyx::RigidBody>(new hyx::RigidBody(hyx::Name(name))).get());
    osg::Group* const group = new osg::Group;
    group->setName(name);
    return group;
}

osg::Group* buildTower(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    return build(simulation, application, "tower");
}

osg::Group* buildHeap(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    return build(simulation, application, "heap");
}

osg::Group* failToBuild(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    build(simulation, application, "ruin")->unref();
    throw std::runtime_error("the blueprint is lost");
}

hyxOSG::BuildScenePtr nativeScene(std::string const& name) {
    return name == "tower" ? buildTower : name == "heap" ? buildHeap : name == "ruin" ? failToBuild : nullptr;
}

constexpr Declared functions[] = {
    FUNCTION(makePanel, FREE(makePanel, (osg::Group*, void const*))),
    FUNCTION(deletePanel, FREE(deletePanel, (hyxOSG::Panel*))),
    FUNCTION(borrow, FREE(borrow, (hyx::Referenced*))),
    FUNCTION(borrowNode, FREE(borrowNode, (osg::Node*))),
    FUNCTION(nativeScene, FREE(nativeScene, (std::string const&))),
};

} // namespace

ROWS(functions);
