// Rows of ForceArrowRenderer.
#include "platform/hyxOSG/renderers/force_arrow_renderer.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"

namespace {

constexpr Declared force_arrow_renderer_rows[] = {
    FUNCTION(new_ForceArrowRenderer, NEW(hyxOSG::ForceArrowRenderer, ())),
    FUNCTION(ForceArrowRenderer_add,
             METHOD(hyxOSG::ForceArrowRenderer, add, (hyx::RigidBody*, hyx::Vec3 const&, hyxRender::Color const&),
                    hyxRender::Color::Red()),
             METHOD(hyxOSG::ForceArrowRenderer, add,
                    (hyx::Constraint1DOF*, hyx::Vec3 const&, hyxRender::Color const&, int),
                    hyxOSG::ForceArrowRenderer::DEFAULT)),
    FUNCTION(ForceArrowRenderer_remove, METHOD(hyxOSG::ForceArrowRenderer, remove, (hyx::RigidBody*)),
             METHOD(hyxOSG::ForceArrowRenderer, remove, (hyx::Constraint1DOF*))),
    FUNCTION(ForceArrowRenderer_setColor,
             METHOD(hyxOSG::ForceArrowRenderer, setColor, (hyx::RigidBody*, hyxRender::Color const&)),
             METHOD(hyxOSG::ForceArrowRenderer, setColor, (hyx::Constraint1DOF*, hyxRender::Color const&))),
    FUNCTION(ForceArrowRenderer_setSmoothFactor, METHOD(hyxOSG::ForceArrowRenderer, setSmoothFactor, (double))),
    FUNCTION(ForceArrowRenderer_getSmoothFactor, METHOD(hyxOSG::ForceArrowRenderer, getSmoothFactor, () const)),
    FUNCTION(ForceArrowRenderer_setConeHeight, METHOD(hyxOSG::ForceArrowRenderer, setConeHeight, (double))),
    FUNCTION(ForceArrowRenderer_getConeHeight, METHOD(hyxOSG::ForceArrowRenderer, getConeHeight, () const)),
    FUNCTION(ForceArrowRenderer_setArrowRadius, METHOD(hyxOSG::ForceArrowRenderer, setArrowRadius, (double))),
    FUNCTION(ForceArrowRenderer_getArrowRadius, METHOD(hyxOSG::ForceArrowRenderer, getArrowRadius, () const)),
    FUNCTION(ForceArrowRenderer_setScale, METHOD(hyxOSG::ForceArrowRenderer, setScale, (double))),
    FUNCTION(ForceArrowRenderer_getScale, METHOD(hyxOSG::ForceArrowRenderer, getScale, () const)),
    REGISTER(hyxOSG::ForceArrowRenderer, ForceArrowRenderer),
    INIT(ForceArrowRenderer),
};

} // namespace

ROWS(force_arrow_renderer_rows);
