// Gives out the panels that an application makes.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/decoration/panel.h"

namespace {

constexpr Declared panel_rows[] = {
    FUNCTION(ExampleApplication_getHelpPanel, METHOD(hyxOSG::ExampleApplication, getHelpPanel, ())),
    FUNCTION(ExampleApplication_getStatusPanel, METHOD(hyxOSG::ExampleApplication, getStatusPanel, ())),
    FUNCTION(ExampleApplication_getErrorPanel, METHOD(hyxOSG::ExampleApplication, getErrorPanel, ())),
    FUNCTION(ExampleApplication_getSelectionPanel, METHOD(hyxOSG::ExampleApplication, getSelectionPanel, ())),
    FUNCTION(ExampleApplication_getPanelGroup, METHOD(hyxOSG::ExampleApplication, getPanelGroup, ())),
};

} // namespace

ROWS(panel_rows);
