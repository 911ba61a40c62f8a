// Composes translation, rotation and scale into a node's matrix.
#include "platform/hyxOSG/nodes/transform.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/osg/attachment.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/meshes/conversions.h"

#include <cmath>
#include <stdexcept>

namespace hyxOSG {

Transform::Transform() : m_scale(1, 1, 1) {}

Transform::Transform(Transform const& other, osg::CopyOp const& copyOperation)
    : osg::MatrixTransform(other, copyOperation),
      m_scale(other.m_scale),
      m_rotation(other.m_rotation),
      m_translation(other.m_translation) {}

Transform::~Transform() = default;

void Transform::setName(std::string const& name) {
    osg::MatrixTransform::setName(name);
}

bool Transform::addChild(osg::Node* child) {
    if (!child || containsNode(child))
        return false;
    osg::requireAttachable(*this, *child);
    return osg::MatrixTransform::addChild(child);
}

bool Transform::addChild(GeometryNode* child) {
    return addChild(static_cast<osg::Node*>(child));
}

void Transform::setMatrix(hyx::AffineMatrix4x4 const& matrix) {
    osg::Matrixd const value = toOsg(hyx::requireFinite(matrix, "a transform's matrix"));
    osg::Quat scaleOrientation;
    value.decompose(m_translation, m_rotation, m_scale, scaleOrientation);
    osg::MatrixTransform::setMatrix(value);
}

void Transform::setScale(hyx::Vec3 const& scale) {
    for (double const factor : {scale.x, scale.y, scale.z})
        if (factor == 0 || !std::isfinite(factor))
            throw std::invalid_argument("scale factors must be numbers other than 0");
    m_scale = toOsg(scale);
    compose();
}

void Transform::setTranslate(hyx::Vec3 const& translation) {
    m_translation = toOsg(hyx::requireFinite(translation, "a translation"));
    compose();
}

void Transform::setRotate(hyx::Quat const& rotation) {
    osg::Quat const value = toOsg(rotation);
    double const length = value.length();
    if (!(length > 0) || !std::isfinite(length))
        throw std::invalid_argument("a rotation needs a quaternion other than zero");
    m_rotation = value / length;
    compose();
}

void Transform::compose() {
    osg::MatrixTransform::setMatrix(osg::Matrixd::scale(m_scale) * osg::Matrixd::rotate(m_rotation) *
                                    osg::Matrixd::translate(m_translation));
}

} // namespace hyxOSG
