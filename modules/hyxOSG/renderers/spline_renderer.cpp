// Rows of SplineRenderer.
#include "platform/hyxOSG/renderers/spline_renderer.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared spline_renderer_rows[] = {
    FUNCTION(new_SplineRenderer, NEW(hyxOSG::SplineRenderer, (hyxUtil::Spline*, osg::Group*))),
    FUNCTION(SplineRenderer_update, METHOD(hyxOSG::SplineRenderer, update, ()),
             METHOD(hyxOSG::SplineRenderer, update, (hyx::RealVector const&))),
    FUNCTION(SplineRenderer_setSplineModel, METHOD(hyxOSG::SplineRenderer, setSplineModel, (hyxUtil::Spline*))),
    FUNCTION(SplineRenderer_getSplineModel, METHOD(hyxOSG::SplineRenderer, getSplineModel, ()),
             METHOD(hyxOSG::SplineRenderer, getSplineModel, () const)),
    FUNCTION(SplineRenderer_setRadius, METHOD(hyxOSG::SplineRenderer, setRadius, (double))),
    FUNCTION(SplineRenderer_getRadius, METHOD(hyxOSG::SplineRenderer, getRadius, () const)),
    FUNCTION(SplineRenderer_setNumSegmentsPerUnitLength,
             METHOD(hyxOSG::SplineRenderer, setNumSegmentsPerUnitLength, (double))),
    FUNCTION(SplineRenderer_getNumSegmentsPerUnitLength,
             METHOD(hyxOSG::SplineRenderer, getNumSegmentsPerUnitLength, () const)),
    FUNCTION(SplineRenderer_setColor, METHOD(hyxOSG::SplineRenderer, setColor, (hyx::Vec4f const&))),
    FUNCTION(SplineRenderer_getColor, METHOD(hyxOSG::SplineRenderer, getColor, () const)),
    FUNCTION(SplineRenderer_removeNotification, LISTENER(METHOD(hyxOSG::SplineRenderer, removeNotification, ()), 75,
                                                         "swig/configuration/hyxPython/hyxSDK")),
    REGISTER(hyxOSG::SplineRenderer, SplineRenderer),
    INIT(SplineRenderer),
};

} // namespace

ROWS(spline_renderer_rows);
