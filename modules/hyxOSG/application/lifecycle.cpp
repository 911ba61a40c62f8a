// Rows of ExampleApplication: from making it to its end.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared lifecycle_rows[] = {
    FUNCTION(new_ExampleApplication, NEW(hyxOSG::ExampleApplication, ()),
             NEW(hyxOSG::ExampleApplication, (hyxSDK::Simulation*))),
    FUNCTION(ExampleApplication_init, METHOD(hyxOSG::ExampleApplication, init, (hyxIO::ArgumentParser*, bool), false)),
    FUNCTION(ExampleApplication_initSimulation,
             METHOD(hyxOSG::ExampleApplication, initSimulation, (hyxSDK::Simulation*, bool),
                    static_cast<hyxSDK::Simulation*>(nullptr), true)),
    FUNCTION(ExampleApplication_initViewer, METHOD(hyxOSG::ExampleApplication, initViewer, (int, int, bool), false)),
    FUNCTION(ExampleApplication_setupViewer, METHOD(hyxOSG::ExampleApplication, setupViewer, (bool, bool), true, true)),
    FUNCTION(ExampleApplication_initGraphics, METHOD(hyxOSG::ExampleApplication, initGraphics, ())),
    FUNCTION(ExampleApplication_initRpc, METHOD(hyxOSG::ExampleApplication, initRpc, ())),
    FUNCTION(ExampleApplication_initScene, METHOD(hyxOSG::ExampleApplication, initScene, ()),
             METHOD(hyxOSG::ExampleApplication, initScene, (osg::Group*))),
    FUNCTION(ExampleApplication_initialized, METHOD(hyxOSG::ExampleApplication, initialized, () const)),
    FUNCTION(ExampleApplication_getArguments, METHOD(hyxOSG::ExampleApplication, getArguments, ())),
    FUNCTION(ExampleApplication_getRenderProxyFactory, METHOD(hyxOSG::ExampleApplication, getRenderProxyFactory, ())),
    FUNCTION(ExampleApplication_createVisual,
             METHOD(hyxOSG::ExampleApplication, createVisual, (hyxSDK::Simulation*, float, bool), 1.0f, false),
             METHOD(hyxOSG::ExampleApplication, createVisual, (hyxSDK::Assembly*, float, bool), 1.0f, false)),
    FUNCTION(ExampleApplication_setOsgNotifyLevel,
             METHOD(hyxOSG::ExampleApplication, setOsgNotifyLevel, (osg::NotifySeverity) const)),
    REGISTER(hyxOSG::ExampleApplication, ExampleApplication),
    INIT(ExampleApplication),
};

} // namespace

ROWS(lifecycle_rows);
