// Nodes that take their place from something that moves.
#pragma once

#include <osg/MatrixTransform>

#include <functional>

namespace hyxOSG {

/// Moves a transform to where a function says, at every update traversal.
class FollowCallback : public osg::NodeCallback {
public:
    explicit FollowCallback(std::function<osg::Matrixd()> place) : m_place(std::move(place)) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        if (osg::Transform* const transform = node->asTransform())
            if (osg::MatrixTransform* const matrix = transform->asMatrixTransform())
                matrix->setMatrix(m_place());
        traverse(node, visitor);
    }

private:
    std::function<osg::Matrixd()> m_place;
};

/// A transform that is moved to `place` now and at every update traversal.
inline osg::ref_ptr<osg::MatrixTransform> following(std::function<osg::Matrixd()> place) {
    osg::ref_ptr<osg::MatrixTransform> const transform = new osg::MatrixTransform(place());
    transform->addUpdateCallback(new FollowCallback(std::move(place)));
    return transform;
}

} // namespace hyxOSG
