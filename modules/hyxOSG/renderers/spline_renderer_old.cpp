// Rows of SplineRendererOld.
#include "platform/hyxOSG/renderers/spline_renderer_old.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared spline_renderer_old_rows[] = {
    FUNCTION(new_SplineRendererOld, NEW(hyxOSG::SplineRendererOld, (hyxUtil::Spline*, osg::Group*))),
    FUNCTION(SplineRendererOld_update, METHOD(hyxOSG::SplineRendererOld, update, ()),
             METHOD(hyxOSG::SplineRendererOld, update, (hyx::RealVector const&))),
    FUNCTION(SplineRendererOld_setSplineModel, METHOD(hyxOSG::SplineRendererOld, setSplineModel, (hyxUtil::Spline*))),
    FUNCTION(SplineRendererOld_getSplineModel, METHOD(hyxOSG::SplineRendererOld, getSplineModel, ()),
             METHOD(hyxOSG::SplineRendererOld, getSplineModel, () const)),
    FUNCTION(SplineRendererOld_setRadius, METHOD(hyxOSG::SplineRendererOld, setRadius, (double))),
    FUNCTION(SplineRendererOld_getRadius, METHOD(hyxOSG::SplineRendererOld, getRadius, () const)),
    FUNCTION(SplineRendererOld_setNumSegmentsPerUnitLength,
             METHOD(hyxOSG::SplineRendererOld, setNumSegmentsPerUnitLength, (double))),
    FUNCTION(SplineRendererOld_getNumSegmentsPerUnitLength,
             METHOD(hyxOSG::SplineRendererOld, getNumSegmentsPerUnitLength, () const)),
    FUNCTION(SplineRendererOld_setColor, METHOD(hyxOSG::SplineRendererOld, setColor, (hyx::Vec4f const&))),
    FUNCTION(SplineRendererOld_getColor, METHOD(hyxOSG::SplineRendererOld, getColor, () const)),
    FUNCTION(SplineRendererOld_removeNotification, LISTENER(METHOD(hyxOSG::SplineRendererOld, removeNotification, ()),
                                                            75, "swig/configuration/hyxPython/hyxSDK")),
    REGISTER(hyxOSG::SplineRendererOld, SplineRendererOld),
    INIT(SplineRendererOld),
};

} // namespace

ROWS(spline_renderer_old_rows);
