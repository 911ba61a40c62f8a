// Rows of DeformableHeightFieldRenderer.
#include "platform/hyxOSG/renderers/deformable_height_field_renderer.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxModel/height_field_deformer.h"
#include "platform/hyxOSG/nodes/geometry_node.h"

namespace {

constexpr Declared deformable_height_field_renderer_rows[] = {
    FUNCTION(new_DeformableHeightFieldRenderer,
             NEW(hyxOSG::DeformableHeightFieldRenderer, (hyxModel::HeightFieldDeformer*, osg::Group*))),
    FUNCTION(DeformableHeightFieldRenderer_last,
             LISTENER(METHOD(hyxOSG::DeformableHeightFieldRenderer, last, (hyx::TimeStamp)), 88,
                      "swig/configuration/hyxPython/hyxSDK")),
    FUNCTION(DeformableHeightFieldRenderer_getHeightFieldNode,
             METHOD(hyxOSG::DeformableHeightFieldRenderer, getHeightFieldNode, () const)),
    FUNCTION(DeformableHeightFieldRenderer_forceWireFrameRendering,
             METHOD(hyxOSG::DeformableHeightFieldRenderer, forceWireFrameRendering, ())),
    FUNCTION(DeformableHeightFieldRenderer_setAsDirty, METHOD(hyxOSG::DeformableHeightFieldRenderer, setAsDirty, ())),
    FUNCTION(DeformableHeightFieldRenderer_isValid, METHOD(hyxOSG::DeformableHeightFieldRenderer, isValid, () const)),
    REGISTER(hyxOSG::DeformableHeightFieldRenderer, DeformableHeightFieldRenderer),
    INIT(DeformableHeightFieldRenderer),
};

} // namespace

ROWS(deformable_height_field_renderer_rows);
