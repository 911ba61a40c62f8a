// Looking through a camera: orbiting, rays under the pointer, what they hit.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyxCollide/local_geometry_contact.h"

namespace osg {
class Camera;
class Group;
} // namespace osg

namespace osgViewer {
class Viewer;
} // namespace osgViewer

namespace hyxCollide {
class Space;
} // namespace hyxCollide

namespace hyxOSG {

/// Gives `viewer` an orbit manipulator around `scene`, at home in `eye` looking at `center` with `up` upwards.
/// `mouseButton`: the button that turns the view (1 = left, 2 = middle, 3 = right). False for null arguments and when
/// eye and centre coincide or `up` points along the view.
bool setOrbitCamera(osgViewer::Viewer* viewer, osg::Group* scene, hyx::Vec3 const& eye, hyx::Vec3 const& center,
                    hyx::Vec3 const& up, int mouseButton = 1);

/// The points of the near and far plane under a point of the window, `x` and `y` in pixels from the lower left corner,
/// in the frame of the picture, which an application may have moved against that of its simulation. A null camera, or
/// one without a viewport, leaves the points as they are.
void getNearFarPoints(osg::Camera const* camera, float x, float y, hyx::Vec3& nearPoint, hyx::Vec3& farPoint);

/// The nearest geometry of `space` under a point of the window, with the place it is hit. Empty (no geometry) when
/// nothing is hit or an argument is null.
hyxCollide::LocalGeometryContact getHoveredGeometryContact(osg::Camera const* camera, hyxCollide::Space* space, float x,
                                                           float y);

} // namespace hyxOSG
