#include "platform/hyxOSG/renderers/wire_renderer_old.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared functions[] = {
    FUNCTION(new_WireRendererOld, NEW(hyxOSG::WireRendererOld, (hyxWire::Wire*, osg::Group*))),
    REGISTER(hyxOSG::WireRendererOld, WireRendererOld),
    INIT(WireRendererOld),
};

} // namespace

ROWS(functions);
