// Rows of the listeners that are called around each frame.
#include "binding/vocabulary/rows.h"
#include "modules/hyxOSG/application/application_listener_director.h"
#include "platform/hyxOSG/application/example_application_listener.h"

namespace {

constexpr Declared listener_rows[] = {
    FUNCTION(new_ExampleApplicationListener,
             NEW_DIRECTOR(hyxOSG::ExampleApplicationListener, SwigDirector_ExampleApplicationListener, ())),
    FUNCTION(ExampleApplicationListener_preFrame,
             LISTENER(VIRTUAL(hyxOSG::ExampleApplicationListener, preFrame, (hyxOSG::ExampleApplication*)), 205,
                      "swig/configuration/hyxPython/hyxOSG")),
    FUNCTION(ExampleApplicationListener_postFrame,
             LISTENER(VIRTUAL(hyxOSG::ExampleApplicationListener, postFrame, (hyxOSG::ExampleApplication*)), 206,
                      "swig/configuration/hyxPython/hyxOSG")),
    FUNCTION(disown_ExampleApplicationListener, DISOWN(hyxOSG::ExampleApplicationListener)),
    REGISTER(hyxOSG::ExampleApplicationListener, ExampleApplicationListener),
    INIT(ExampleApplicationListener),
};

} // namespace

ROWS(listener_rows);
