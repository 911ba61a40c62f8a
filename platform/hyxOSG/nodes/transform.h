// Placing nodes by translation, rotation and scale.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/vec3.h"

#include <osg/MatrixTransform>

#include <string>

namespace hyxOSG {
class GeometryNode;

/// A transform node that is set with the physics library's values. Scale, rotation and translation are kept apart:
/// setting one leaves the other two as they are.
class Transform : public osg::MatrixTransform {
public:
    /// The identity transform.
    Transform();

    /// Copies the transform of `other`; children as `copyOperation` says.
    Transform(Transform const& other, osg::CopyOp const& copyOperation = osg::CopyOp::SHALLOW_COPY);

    META_Node(hyxOSG, Transform)

        /// The name that searches by name find the node under.
        void setName(std::string const& name);

    /// Puts `child` under this transform. False for null and for a child that is already here.
    /// \throws std::invalid_argument for a child that this transform stands below
    bool addChild(osg::Node* child);

    /// The same for the visual of a geometry, which goes on following its geometry, seen through this transform.
    bool addChild(GeometryNode* child);

    using osg::MatrixTransform::setMatrix;

    /// Replaces the whole transform. Its scale, rotation and translation are the parts that the setters below keep.
    void setMatrix(hyx::AffineMatrix4x4 const& matrix);

    /// Scale factors along the local axes; 1 at first. A zero or not finite factor raises std::invalid_argument.
    void setScale(hyx::Vec3 const& scale);

    /// Position, metres.
    void setTranslate(hyx::Vec3 const& translation);

    /// Orientation; it is normalised. The zero quaternion raises std::invalid_argument.
    void setRotate(hyx::Quat const& rotation);

protected:
    ~Transform() override;

private:
    void compose();

    osg::Vec3d m_scale;
    osg::Quat m_rotation;
    osg::Vec3d m_translation;
};

} // namespace hyxOSG
