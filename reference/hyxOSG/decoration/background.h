// The coloured background behind everything.
#pragma once

#include <osg/Camera>
#include <osg/Geometry>

#include <array>

namespace hyxOSG::decorator {

/// A rectangle over the whole view, drawn first and without depth, with a colour in each corner.
class Background {
public:
    Background();

    osg::Node* node() { return m_camera; }

    /// Called when the background is drawn.
    void setDrawCallback(osg::Drawable::DrawCallback* callback) { m_rectangle->setDrawCallback(callback); }

    void setColors(osg::Vec4 const& upperLeft, osg::Vec4 const& upperRight, osg::Vec4 const& lowerLeft,
                   osg::Vec4 const& lowerRight);

    /// In the order of `setColors`.
    std::array<osg::Vec4, 4> colors() const;

private:
    osg::ref_ptr<osg::Camera> m_camera;
    osg::ref_ptr<osg::Geometry> m_rectangle;
};

} // namespace hyxOSG::decorator
