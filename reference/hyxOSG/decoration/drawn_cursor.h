// An arrow drawn into the picture where the pointer is.
#pragma once

#include <osg/MatrixTransform>

namespace hyxOSG::decorator {

class DrawnCursor {
public:
    DrawnCursor();

    osg::Node* node() { return m_transform; }

    void setEnabled(bool enabled);

    bool enabled() const { return m_enabled; }

    /// The arrow's tip, in pixels.
    void setPosition(osg::Vec2f const& position);
    void layOut(float scale);

private:
    osg::ref_ptr<osg::MatrixTransform> m_transform;
    osg::Vec2f m_position;
    bool m_enabled = false;
};

} // namespace hyxOSG::decorator
