// Rows of PressureFieldRenderer.
#include "platform/hyxOSG/renderers/pressure_field_renderer.h"

#include "binding/vocabulary/rows.h"

namespace {

#define HYX_MODEL "swig/configuration/hyxPython/hyxModel"

constexpr Declared pressure_field_renderer_rows[] = {
    FUNCTION(new_PressureFieldRenderer, NEW(hyxOSG::PressureFieldRenderer, (osg::Group*, double), 0.0)),
    FUNCTION(PressureFieldRenderer_addTriangle,
             LISTENER(METHOD(hyxOSG::PressureFieldRenderer, addTriangle,
                             (hyxModel::TriangleData const&, hyx::AffineMatrix4x4 const&)),
                      102, HYX_MODEL)),
    FUNCTION(PressureFieldRenderer_clear, LISTENER(METHOD(hyxOSG::PressureFieldRenderer, clear, ()), 103, HYX_MODEL)),
    FUNCTION(PressureFieldRenderer_done, LISTENER(METHOD(hyxOSG::PressureFieldRenderer, done, ()), 104, HYX_MODEL)),
    FUNCTION(PressureFieldRenderer_updateTransform,
             LISTENER(METHOD(hyxOSG::PressureFieldRenderer, updateTransform, (hyx::AffineMatrix4x4 const&)), 105,
                      HYX_MODEL)),
    REGISTER(hyxOSG::PressureFieldRenderer, PressureFieldRenderer),
    INIT(PressureFieldRenderer),
};

} // namespace

ROWS(pressure_field_renderer_rows);
