#include "platform/hyxOSG/reference_helpers.h"

#include "platform/hyxOSG/geometry_node.h"
#include "platform/hyxOSG/transform.h"

namespace {

void take(osg::Referenced const * object) {
    if (object)
        object->ref();
}

void release(osg::Referenced const * object) {
    if (object)
        object->unref();
}

}

namespace osg {

void Group_reference(osg::Group * group) {
    take(group);
}
void Group_unreference(osg::Group * group) {
    release(group);
}

}

namespace hyxOSG {

void GeometryNode_reference(GeometryNode * node) {
    take(node);
}
void GeometryNode_unreference(GeometryNode * node) {
    release(node);
}
void Transform_reference(Transform * transform) {
    take(transform);
}
void Transform_unreference(Transform * transform) {
    release(transform);
}

}
