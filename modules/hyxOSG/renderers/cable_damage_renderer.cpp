// Rows of CableDamageRenderer.
#include "platform/hyxOSG/renderers/cable_damage_renderer.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/nodes/geometry_node.h"

namespace {

constexpr Declared cable_damage_renderer_rows[] = {
    FUNCTION(new_CableDamageRenderer, NEW(hyxOSG::CableDamageRenderer, (hyxCable::CableDamage*, double, osg::Group*))),
    FUNCTION(CableDamageRenderer_renderCurrent, METHOD(hyxOSG::CableDamageRenderer, renderCurrent, ())),
    FUNCTION(CableDamageRenderer_renderAccumulated, METHOD(hyxOSG::CableDamageRenderer, renderAccumulated, ())),
    FUNCTION(CableDamageRenderer_isRenderingCurrent, METHOD(hyxOSG::CableDamageRenderer, isRenderingCurrent, () const)),
    FUNCTION(CableDamageRenderer_isRenderingAccumulated,
             METHOD(hyxOSG::CableDamageRenderer, isRenderingAccumulated, () const)),
    FUNCTION(CableDamageRenderer_setEnableRendering, METHOD(hyxOSG::CableDamageRenderer, setEnableRendering, (bool))),
    FUNCTION(CableDamageRenderer_getEnableRendering, METHOD(hyxOSG::CableDamageRenderer, getEnableRendering, () const)),
    FUNCTION(CableDamageRenderer_setColorRangeMax, METHOD(hyxOSG::CableDamageRenderer, setColorRangeMax, (double))),
    FUNCTION(CableDamageRenderer_getColorRangeMax, METHOD(hyxOSG::CableDamageRenderer, getColorRangeMax, () const)),
    FUNCTION(CableDamageRenderer_getOsgNode, METHOD(hyxOSG::CableDamageRenderer, getOsgNode, (size_t))),
    FUNCTION(CableDamageRenderer_last,
             LISTENER(METHOD(hyxOSG::CableDamageRenderer, last, (double)), 88, "swig/configuration/hyxPython/hyxSDK")),
    REGISTER(hyxOSG::CableDamageRenderer, CableDamageRenderer),
    INIT(CableDamageRenderer),
};

} // namespace

ROWS(cable_damage_renderer_rows);
