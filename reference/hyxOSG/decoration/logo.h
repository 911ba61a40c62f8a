// The picture in a corner of the window.
#pragma once

#include "platform/hyxOSG/decoration/scene_decorator.h"

#include <osg/Geometry>

namespace hyxOSG::decorator {

class Logo {
public:
    Logo();

    osg::Node* node() { return m_rectangle; }

    void setEnabled(bool enabled) { m_enabled = enabled; }

    bool enabled() const { return m_enabled; }

    /// Null: no logo. The dimension becomes the texture's, fitted into the maximum.
    void setTexture(osg::Texture2D* texture, float alpha);

    osg::Texture2D* texture() { return m_texture; }

    void setLocation(SceneDecorator::LogoLocation location) { m_location = location; }

    SceneDecorator::LogoLocation location() const { return m_location; }

    /// Distance from the corner in fractions of the window.
    void setPosition(osg::Vec2f const& position) { m_position = position; }

    static osg::Vec2f defaultPosition() { return osg::Vec2f(0.02f, 0.02f); }

    osg::Vec2f& dimension() { return m_dimension; }

    osg::Vec2f maximumDimension() const { return m_maximum; }

    void setMaximumDimension(osg::Vec2f const& maximum);

    /// Brings the drawn rectangle up to date.
    void layOut(osg::Vec2f const& window, float scale);

private:
    void fitDimension();
    osg::Vec2f lowerLeft(osg::Vec2f const& window, osg::Vec2f const& size) const;

    osg::ref_ptr<osg::Geometry> m_rectangle;
    osg::ref_ptr<osg::Texture2D> m_texture;
    bool m_enabled = true;
    SceneDecorator::LogoLocation m_location = SceneDecorator::LOWER_RIGHT;
    osg::Vec2f m_position = defaultPosition();
    osg::Vec2f m_dimension;
    osg::Vec2f m_maximum{256, 128};
};

} // namespace hyxOSG::decorator
