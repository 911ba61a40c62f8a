// Rows of GeometryNode.
#include "platform/hyxOSG/nodes/geometry_node.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxOSG/nodes/reference_helpers.h"

namespace {

constexpr Declared geometry_node_rows[] = {
    FUNCTION(new_GeometryNode, NEW(hyxOSG::GeometryNode, ()), NEW(hyxOSG::GeometryNode, (hyxCollide::Geometry*)),
             NEW(hyxOSG::GeometryNode, (hyxOSG::GeometryNode const&, osg::CopyOp const&),
                 osg::CopyOp(osg::CopyOp::SHALLOW_COPY))),
    FUNCTION(delete_GeometryNode, DELETE(hyxOSG::GeometryNode)),
    FUNCTION(GeometryNode_setGeometry, METHOD(hyxOSG::GeometryNode, setGeometry, (hyxCollide::Geometry*))),
    FUNCTION(GeometryNode_getGeometry, METHOD(hyxOSG::GeometryNode, getGeometry, ())),
    FUNCTION(GeometryNode_setAutoRemove, METHOD(hyxOSG::GeometryNode, setAutoRemove, (bool))),
    FUNCTION(GeometryNode_getAutoRemove, METHOD(hyxOSG::GeometryNode, getAutoRemove, () const)),
    FUNCTION(GeometryNode_removeNode,
             METHOD(hyxOSG::GeometryNode, removeNode, (hyxCollide::Space*, hyxCollide::Geometry*))),
    FUNCTION(GeometryNode_removeFromParents, METHOD(hyxOSG::GeometryNode, removeFromParents, ())),
    FUNCTION(GeometryNode_updateTransform, METHOD(hyxOSG::GeometryNode, updateTransform, ())),
    FUNCTION(GeometryNode_selectRenderChild,
             METHOD(hyxOSG::GeometryNode, selectRenderChild, (hyxOSG::GeometryNode::RenderFlag))),
    FUNCTION(GeometryNode_getSelectedRenderChild, METHOD(hyxOSG::GeometryNode, getSelectedRenderChild, () const)),
    FUNCTION(GeometryNode_setRenderChild,
             METHOD(hyxOSG::GeometryNode, setRenderChild, (hyxOSG::GeometryNode::RenderFlag, osg::Node*))),
    FUNCTION(GeometryNode_getRenderChild,
             METHOD(hyxOSG::GeometryNode, getRenderChild, (hyxOSG::GeometryNode::RenderFlag)),
             METHOD(hyxOSG::GeometryNode, getRenderChild, (hyxOSG::GeometryNode::RenderFlag) const)),
    FUNCTION(GeometryNode_cloneType, METHOD(hyxOSG::GeometryNode, cloneType, () const)),
    FUNCTION(GeometryNode_clone, METHOD(hyxOSG::GeometryNode, clone, (osg::CopyOp const&) const)),
    FUNCTION(GeometryNode_isSameKindAs, METHOD(hyxOSG::GeometryNode, isSameKindAs, (osg::Object const*) const)),
    FUNCTION(GeometryNode_className, METHOD(hyxOSG::GeometryNode, className, () const)),
    FUNCTION(GeometryNode_libraryName, METHOD(hyxOSG::GeometryNode, libraryName, () const)),
    FUNCTION(GeometryNode_traverse, METHOD(hyxOSG::GeometryNode, traverse, (osg::NodeVisitor&))),
    FUNCTION(GeometryNode_shapeCallback_get, GET_BORROWED(hyxOSG::GeometryNode, shapeCallback)),
    FUNCTION(GeometryNode_shapeCallback_set,
             SET(hyxOSG::GeometryNode, shapeCallback, (hyxCollide::Geometry::ShapeChangeEvent::CallbackType const&))),
    REGISTER(hyxOSG::GeometryNode, GeometryNode),
    INIT(GeometryNode),
    FUNCTION(GeometryNode_reference, FREE(hyxOSG::GeometryNode_reference, (hyxOSG::GeometryNode*))),
    FUNCTION(GeometryNode_unreference, FREE(hyxOSG::GeometryNode_unreference, (hyxOSG::GeometryNode*))),
    FUNCTION(Group_reference, FREE(osg::Group_reference, (osg::Group*))),
    FUNCTION(Group_unreference, FREE(osg::Group_unreference, (osg::Group*))),
};

} // namespace

ROWS(geometry_node_rows);
