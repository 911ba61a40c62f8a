// The view from a light that a shadow map is drawn with.
#pragma once

#include <osg/BoundingBox>
#include <osg/Matrixd>
#include <osg/Vec2d>
#include <osg/Vec3d>
#include <osg/Vec4d>

#include <optional>
#include <vector>

namespace hyxOSG::decorator {

/// The width of the lamp that throws soft shadows, by its distance from the middle of the casters; for a light far away
/// its angle in radians. A caster that is h above the ground has a half shadow of about this times h.
inline constexpr double LAMP_SPREAD = 0.06;

/// View and projection from a light.
struct LightView {
    osg::Matrixd view;
    osg::Matrixd projection;
    double texelSize = 0; ///< width of a texel where the shadows fall, in metres
    osg::Vec2d penumbra;  ///< its half width, in shares of the map, by the difference of the depths in the map

    /// From the scene to texture coordinates and depth.
    osg::Matrixd textureMatrix() const;
};

/// What a light view is fitted to. All coordinates are those of the scene.
struct LightViewNeeds {
    osg::Vec4d light; ///< homogeneous position
    osg::BoundingBox casters;
    std::vector<osg::Vec3d> casterCorners; ///< of each one's own box: a box of all may reach up to the light
    std::vector<osg::Vec3d> visible;       ///< corners of what the camera sees of the scene
    osg::Vec3d cameraDirection;
    unsigned int mapSize = 0;
    double lampSpread = 0;        ///< as LAMP_SPREAD; 0 for hard shadows
    bool alignWithCamera = false; ///< turn the map with the camera, for the tightest fit; else it keeps still
};

/// The view that covers everything that is both behind a caster and visible; nothing when there is no such place.
std::optional<LightView> fitLightView(LightViewNeeds const& needs);

/// The corners of the part of a box that lies in a view, whose far side is left open; `matrix` is the view and
/// projection. With a depth range only what lies in it, in metres along the view direction.
std::vector<osg::Vec3d> visibleCorners(osg::BoundingBox const& box, osg::Matrixd const& view,
                                       osg::Matrixd const& projection, double nearest, double farthest);

} // namespace hyxOSG::decorator
