// Rows of what an application hands out: its remote control, and its factory of visuals.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application_controller.h"
#include "platform/hyxOSG/application/render_proxy_factory.h"

namespace {

constexpr Declared application_part_rows[] = {
    FUNCTION(ExampleApplicationController_getPort, METHOD(hyxOSG::ExampleApplicationController, getPort, () const)),
    FUNCTION(ExampleApplicationController_getToken, METHOD(hyxOSG::ExampleApplicationController, getToken, () const)),
    FUNCTION(ExampleApplicationController_getUrl, METHOD(hyxOSG::ExampleApplicationController, getUrl, () const)),
    FUNCTION(ExampleApplicationController_getNumClients,
             METHOD(hyxOSG::ExampleApplicationController, getNumClients, () const)),
    REGISTER(hyxOSG::ExampleApplicationController, ExampleApplicationController),
    INIT(ExampleApplicationController),
    FUNCTION(RenderProxyFactory_getNumProxies, METHOD(hyxOSG::RenderProxyFactory, getNumProxies, () const)),
    FUNCTION(RenderProxyFactory_getRoot, METHOD(hyxOSG::RenderProxyFactory, getRoot, () const)),
    REGISTER(hyxOSG::RenderProxyFactory, RenderProxyFactory),
    INIT(RenderProxyFactory),
};

} // namespace

ROWS(application_part_rows);
