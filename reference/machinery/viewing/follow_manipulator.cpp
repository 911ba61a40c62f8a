// Puts the orbit of the base class into the frame of a node.
#include "reference/machinery/viewing/follow_manipulator.h"

#include <cmath>

namespace hyxOSG {

FollowManipulator::FollowManipulator(osg::Node* node, Mode mode) : m_node(node), m_mode(mode) {
    setAllowThrow(false);
    setAutoComputeHomePosition(false);
}

osg::Matrixd FollowManipulator::getMatrix() const {
    return OrbitManipulator::getMatrix() * nodePose();
}

osg::Matrixd FollowManipulator::getInverseMatrix() const {
    return osg::Matrixd::inverse(getMatrix());
}

osg::Matrixd FollowManipulator::nodePose() const {
    osg::ref_ptr<osg::Node> node;
    if (!m_node.lock(node))
        return m_lastPose;
    osg::NodePathList const paths = node->getParentalNodePaths();
    osg::Matrixd const world = paths.empty() ? osg::Matrixd() : osg::computeLocalToWorld(paths.front());
    osg::Quat rotation;
    if (m_mode == WHOLE_ROTATION) {
        rotation = world.getRotate();
    } else if (m_mode == POSITION_AND_HEADING) {
        osg::Vec3d const forward = osg::Matrixd::transform3x3(osg::Vec3d(1, 0, 0), world);
        rotation.makeRotate(std::atan2(forward.y(), forward.x()), osg::Vec3d(0, 0, 1));
    }
    m_lastPose = osg::Matrixd::rotate(rotation) * osg::Matrixd::translate(world.getTrans());
    return m_lastPose;
}

} // namespace hyxOSG
