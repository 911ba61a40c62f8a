// Counts references for the nodes that are counted by function.
#include "platform/hyxOSG/nodes/reference_helpers.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/transform.h"

namespace {

void take(osg::Referenced const* object) {
    if (object)
        object->ref();
}

void release(osg::Referenced const* object) {
    if (object)
        object->unref();
}

} // namespace

namespace hyxOSG {

void GeometryNode_reference(GeometryNode* node) {
    take(node);
}

void GeometryNode_unreference(GeometryNode* node) {
    release(node);
}

void Transform_reference(Transform* transform) {
    take(transform);
}

void Transform_unreference(Transform* transform) {
    release(transform);
}

} // namespace hyxOSG
