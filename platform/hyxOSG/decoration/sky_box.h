// A sky of six images around the scene.
#pragma once

#include <osg/Group>
#include <osg/Vec3f>

#include <string>

namespace hyxOSG {

/// A box that shows a cube map and always surrounds the camera, so that it seems endlessly far away. It is drawn behind
/// everything, does not count in the scene's bounds and takes no part in shadows. The Z axis of the scene points to the
/// map's upper side. In a decorated scene the sky light (`SceneDecorator::setEnableSkyLight`) has its colours.
class SkyBox : public osg::Group {
public:
    /// \param name the node's name
    /// \param imagePath what the names of the six images begin with, folder included
    /// \param imageExtension what they end with, as ".png"
    /// \param heading turn of the sky about the Z axis in radians, counter-clockwise seen from above
    /// \param brightness factor on the images' colours, 0 (black) and up
    /// \throws std::runtime_error when an image cannot be read
    /// \throws std::invalid_argument for a heading or brightness out of range
    SkyBox(std::string const& name, std::string const& imagePath, std::string const& imageExtension,
           double heading = 0.0, float brightness = 1.0f);

    /// The light from above and from below: the mean colours of the map's halves, by solid angle, times the brightness.
    struct Light {
        osg::Vec3f upper, lower;
    };

    Light const& getLight() const { return m_light; }

    /// The sky box below `scene`, of several the last made; null for none.
    static SkyBox const* find(osg::Node const& scene);

    char const* libraryName() const override { return "hyxOSG"; }

    char const* className() const override { return "SkyBox"; }

    osg::BoundingSphere computeBound() const override { return osg::BoundingSphere(); }

protected:
    ~SkyBox() override;

private:
    Light m_light;
};

} // namespace hyxOSG
