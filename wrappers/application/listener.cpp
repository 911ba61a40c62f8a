#include "wrappers/vocabulary/rows.h"

#include "directors/application_listener_director.h"
#include "platform/hyxOSG/example_application_listener.h"

namespace {

constexpr Declared functions[] = {
    FUNCTION(new_ExampleApplicationListener,
        NEW_DIRECTOR(hyxOSG::ExampleApplicationListener, SwigDirector_ExampleApplicationListener, ())),
    FUNCTION(ExampleApplicationListener_preFrame,
        VIRTUAL(hyxOSG::ExampleApplicationListener, preFrame, (hyxOSG::ExampleApplication *))),
    FUNCTION(ExampleApplicationListener_postFrame,
        VIRTUAL(hyxOSG::ExampleApplicationListener, postFrame, (hyxOSG::ExampleApplication *))),
    FUNCTION(disown_ExampleApplicationListener, DISOWN(hyxOSG::ExampleApplicationListener)),
    REGISTER(hyxOSG::ExampleApplicationListener, ExampleApplicationListener),
    INIT(ExampleApplicationListener),
};

} // namespace

ROWS(functions);
