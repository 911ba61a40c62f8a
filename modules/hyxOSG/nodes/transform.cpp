// Rows of Transform.
#include "platform/hyxOSG/nodes/transform.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/reference_helpers.h"

namespace {

constexpr Declared transform_rows[] = {
    FUNCTION(new_Transform, NEW(hyxOSG::Transform, ())),
    FUNCTION(delete_Transform, DELETE(hyxOSG::Transform)),
    FUNCTION(Transform_setName, METHOD(hyxOSG::Transform, setName, (std::string const&))),
    FUNCTION(Transform_addChild, METHOD(hyxOSG::Transform, addChild, (osg::Node*)),
             METHOD(hyxOSG::Transform, addChild, (hyxOSG::GeometryNode*))),
    FUNCTION(Transform_setMatrix, METHOD(hyxOSG::Transform, setMatrix, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(Transform_setScale, METHOD(hyxOSG::Transform, setScale, (hyx::Vec3 const&))),
    FUNCTION(Transform_setTranslate, METHOD(hyxOSG::Transform, setTranslate, (hyx::Vec3 const&))),
    FUNCTION(Transform_setRotate, METHOD(hyxOSG::Transform, setRotate, (hyx::Quat const&))),
    REGISTER(hyxOSG::Transform, Transform),
    INIT(Transform),
    FUNCTION(Transform_reference, FREE(hyxOSG::Transform_reference, (hyxOSG::Transform*))),
    FUNCTION(Transform_unreference, FREE(hyxOSG::Transform_unreference, (hyxOSG::Transform*))),
};

} // namespace

ROWS(transform_rows);
