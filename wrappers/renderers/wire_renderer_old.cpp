#include "platform/hyxOSG/wire_renderer_old.h"
#include "wrappers/vocabulary/rows.h"

namespace {

constexpr Declared functions[] = {
    FUNCTION(new_WireRendererOld, NEW(hyxOSG::WireRendererOld, (hyxWire::Wire *, osg::Group *))),
    REGISTER(hyxOSG::WireRendererOld, WireRendererOld),
    INIT(WireRendererOld),
};

}

ROWS(functions);
