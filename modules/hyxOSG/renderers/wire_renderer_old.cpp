// Rows of WireRendererOld.
#include "platform/hyxOSG/renderers/wire_renderer_old.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared wire_renderer_old_rows[] = {
    FUNCTION(new_WireRendererOld, NEW(hyxOSG::WireRendererOld, (hyxWire::Wire*, osg::Group*))),
    REGISTER(hyxOSG::WireRendererOld, WireRendererOld),
    INIT(WireRendererOld),
};

} // namespace

ROWS(wire_renderer_old_rows);
