// An orbit camera around a moving node.
#pragma once

#include <osg/observer_ptr>
#include <osgGA/OrbitManipulator>

namespace hyxOSG {

/// Turns around a point in the frame of a node, and moves with the node.
class FollowManipulator : public osgGA::OrbitManipulator {
public:
    /// What of the node's motion the camera takes part in.
    enum Mode { POSITION = 0, POSITION_AND_HEADING = 1, WHOLE_ROTATION = 2 };

    /// When the node dies the camera stays where it is.
    FollowManipulator(osg::Node* node, Mode mode);

    osg::Matrixd getMatrix() const override;
    osg::Matrixd getInverseMatrix() const override;

private:
    osg::Matrixd nodePose() const;

    osg::observer_ptr<osg::Node> m_node;
    Mode m_mode;
    mutable osg::Matrixd m_lastPose;
};

} // namespace hyxOSG
