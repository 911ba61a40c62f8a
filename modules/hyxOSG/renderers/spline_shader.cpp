// Rows of SplineShader.
#include "platform/hyxOSG/renderers/spline_shader.h"

#include "binding/vocabulary/rows.h"

namespace vocabulary {

// Handed over uncounted: the group that it is put under counts.
template <>
struct ReferencePolicy<hyxOSG::SplineShader> {
    static void take(hyxOSG::SplineShader*) {}
};

} // namespace vocabulary

namespace {

constexpr Declared spline_shader_rows[] = {
    FUNCTION(new_SplineShader, NEW(hyxOSG::SplineShader, (size_t), 256)),
    FUNCTION(
        SplineShader_add,
        METHOD(hyxOSG::SplineShader, add, (hyx::Vec3 const&, hyx::Vec3 const&, double, hyx::Vec2 const&), hyx::Vec2()),
        METHOD(hyxOSG::SplineShader, add, (hyx::Vec3 const&, hyx::Quat const&, double, double, double), 0.0)),
    FUNCTION(SplineShader_add2,
             METHOD(hyxOSG::SplineShader, add2, (hyx::Vec3 const&, hyx::Quat const&, double, double, double))),
    FUNCTION(SplineShader_update, METHOD(hyxOSG::SplineShader, update, ())),
    FUNCTION(SplineShader_resetCounters, METHOD(hyxOSG::SplineShader, resetCounters, ())),
    FUNCTION(SplineShader_setNumActiveElements, METHOD(hyxOSG::SplineShader, setNumActiveElements, (size_t))),
    FUNCTION(SplineShader_setUseRedShiftScale, METHOD(hyxOSG::SplineShader, setUseRedShiftScale, (bool))),
    FUNCTION(SplineShader_getProgram, METHOD(hyxOSG::SplineShader, getProgram, ())),
    FUNCTION(SplineShader_getCircleResolutionUniform, METHOD(hyxOSG::SplineShader, getCircleResolutionUniform, ())),
    FUNCTION(SplineShader_getCylinderColorUniform, METHOD(hyxOSG::SplineShader, getCylinderColorUniform, ())),
    FUNCTION(SplineShader_getCircleNormalUniform, METHOD(hyxOSG::SplineShader, getCircleNormalUniform, ())),
    FUNCTION(SplineShader_getVertexArray, METHOD(hyxOSG::SplineShader, getVertexArray, ())),
    FUNCTION(SplineShader_getQuatsInColorArray, METHOD(hyxOSG::SplineShader, getQuatsInColorArray, ())),
    FUNCTION(SplineShader_getRadiusArray, METHOD(hyxOSG::SplineShader, getRadiusArray, ())),
    REGISTER(hyxOSG::SplineShader, SplineShader),
    INIT(SplineShader),
};

} // namespace

ROWS(spline_shader_rows);
