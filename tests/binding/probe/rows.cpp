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

hyxOSG::Panel* make_panel(osg::Group* hud, void const* key) {
    return new hyxOSG::Panel(hud, key);
}

void delete_panel(hyxOSG::Panel* panel) {
    delete panel;
}

// The same object without a claim on it: what is seen of it once its owner is gone.
hyx::Referenced* borrow(hyx::Referenced* object) {
    return object;
}

osg::Node* borrow_node(osg::Node* node) {
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

osg::Group* build_tower(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    return build(simulation, application, "tower");
}

osg::Group* build_heap(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    return build(simulation, application, "heap");
}

osg::Group* fail_to_build(hyxSDK::Simulation* simulation, hyxOSG::ExampleApplication* application) {
    build(simulation, application, "ruin")->unref();
    throw std::runtime_error("the blueprint is lost");
}

hyxOSG::BuildScenePtr native_scene(std::string const& name) {
    return name == "tower" ? build_tower : name == "heap" ? build_heap : name == "ruin" ? fail_to_build : nullptr;
}

constexpr Declared functions[] = {
    FUNCTION(make_panel, FREE(make_panel, (osg::Group*, void const*))),
    FUNCTION(delete_panel, FREE(delete_panel, (hyxOSG::Panel*))),
    FUNCTION(borrow, FREE(borrow, (hyx::Referenced*))),
    FUNCTION(borrow_node, FREE(borrow_node, (osg::Node*))),
    FUNCTION(native_scene, FREE(native_scene, (std::string const&))),
};

} // namespace

ROWS(functions);
