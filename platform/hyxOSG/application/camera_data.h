// A saved camera.
#pragma once

#include "platform/hyx/values/vec3.h"

namespace osg {
class Camera;
} // namespace osg

namespace osgViewer {
class Viewer;
} // namespace osgViewer

namespace hyxOSG {

/// The view of a camera as a value: where it stands and looks, and its perspective.
struct CameraData {
    /// Reads the view of `camera`. A null camera, or one without a perspective projection, gives `valid` false.
    explicit CameraData(osg::Camera const* camera);

    /// Reads the view of the main camera of `viewer`, and the near-far ratio too. Null gives `valid` false.
    explicit CameraData(osgViewer::Viewer const* viewer);

    /// Gives `camera` this view; does nothing when the data is not valid. Throws std::invalid_argument for a null
    /// camera.
    void applyTo(osg::Camera* camera) const;

    /// Gives the main camera of `viewer`, and its manipulator when there is one, this view; does nothing when the
    /// data is not valid. Throws std::invalid_argument for a null viewer.
    void applyTo(osgViewer::Viewer* viewer) const;

    double nearClippingPlane = 0.1; ///< metres
    double farClippingPlane = 1000; ///< metres
    double fieldOfView = 45;        ///< vertical opening angle in degrees
    double aspectRatio = 1;         ///< width of the picture over its height
    bool valid = false;             ///< whether the data was read from a camera
    double nearFarRatio = 0.0005;   ///< the smallest allowed near / far when the planes are computed each frame
    hyx::Vec3 eye;                  ///< where the camera stands
    hyx::Vec3 center;               ///< the point it looks at
    hyx::Vec3 up;                   ///< the direction that is up in the picture
};

} // namespace hyxOSG
