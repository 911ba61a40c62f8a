// Rows of WireRenderer.
#include "platform/hyxOSG/renderers/wire_renderer.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared wire_renderer_rows[] = {
    FUNCTION(new_WireRenderer, NEW(hyxOSG::WireRenderer, (hyxWire::Wire*, osg::Group*, hyxUtil::Spline*), nullptr)),
    FUNCTION(WireRenderer_setReferenceMaxTension, METHOD(hyxOSG::WireRenderer, setReferenceMaxTension, (double))),
    FUNCTION(WireRenderer_getReferenceMaxTension, METHOD(hyxOSG::WireRenderer, getReferenceMaxTension, () const)),
    REGISTER(hyxOSG::WireRenderer, WireRenderer),
    INIT(WireRenderer),
};

} // namespace

ROWS(wire_renderer_rows);
