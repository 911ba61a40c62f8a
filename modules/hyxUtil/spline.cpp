// Curves through points.
#include "platform/hyxUtil/spline.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared spline_rows[] = {
    FUNCTION(new_Spline, NEW(hyxUtil::Spline, ())),
    FUNCTION(Spline_add, METHOD(hyxUtil::Spline, add, (hyx::Vec3 const&))),
    FUNCTION(Spline_setPoint, METHOD(hyxUtil::Spline, setPoint, (hyx::Index, hyx::Vec3 const&))),
    FUNCTION(Spline_setPoints, METHOD(hyxUtil::Spline, setPoints, (hyx::Vec3Vector const&))),
    FUNCTION(Spline_clear, METHOD(hyxUtil::Spline, clear, ())),
    FUNCTION(Spline_getNumPoints, METHOD(hyxUtil::Spline, getNumPoints, () const)),
    FUNCTION(Spline_getPoint, METHOD(hyxUtil::Spline, getPoint, (hyx::Index) const)),
    FUNCTION(Spline_evaluate, METHOD(hyxUtil::Spline, evaluate, (hyx::Real) const)),
    FUNCTION(Spline_getTangent, METHOD(hyxUtil::Spline, getTangent, (hyx::Real) const)),
    FUNCTION(Spline_getCurvature, METHOD(hyxUtil::Spline, getCurvature, (hyx::Real) const)),
    FUNCTION(Spline_getLength, METHOD(hyxUtil::Spline, getLength, () const)),
    FUNCTION(Spline_getRevision, METHOD(hyxUtil::Spline, getRevision, () const)),
    FUNCTION(delete_Spline, DELETE(hyxUtil::Spline)),
    REGISTER(hyxUtil::Spline, Spline),
    INIT(Spline),
    FUNCTION(new_CubicSpline, NEW(hyxUtil::CubicSpline, ())),
    FUNCTION(delete_CubicSpline, DELETE(hyxUtil::CubicSpline)),
    REGISTER(hyxUtil::CubicSpline, CubicSpline),
    INIT(CubicSpline),
    FUNCTION(new_HermiteSpline, NEW(hyxUtil::HermiteSpline, (hyx::Real), 0)),
    FUNCTION(HermiteSpline_getTension, METHOD(hyxUtil::HermiteSpline, getTension, () const)),
    FUNCTION(delete_HermiteSpline, DELETE(hyxUtil::HermiteSpline)),
    REGISTER(hyxUtil::HermiteSpline, HermiteSpline),
    INIT(HermiteSpline),
};

} // namespace

ROWS(spline_rows);
