// Reads and sets the view of cameras.
#include "platform/hyxOSG/application/camera_data.h"

#include "reference/machinery/meshes/conversions.h"

#include <osg/Camera>
#include <osgGA/StandardManipulator>
#include <osgViewer/Viewer>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

void readView(CameraData& data, osg::Matrixd const& view, double distance) {
    osg::Vec3d eye, center, up;
    view.getLookAt(eye, center, up, distance);
    data.eye = toHyx(eye);
    data.center = toHyx(center);
    data.up = toHyx(up);
}

// Those of a camera that works its planes out from what it sees.
constexpr double defaultNear = 0.1;
constexpr double defaultFar = 1000;

bool hasDefaultPlanes(CameraData const& data) {
    return data.nearClippingPlane == defaultNear && data.farClippingPlane == defaultFar;
}

bool computesPlanes(osg::Camera const& camera) {
    return camera.getComputeNearFarMode() != osg::Camera::DO_NOT_COMPUTE_NEAR_FAR;
}

void readCamera(CameraData& data, osg::Camera const& camera) {
    data.valid = camera.getProjectionMatrixAsPerspective(data.fieldOfView, data.aspectRatio, data.nearClippingPlane,
                                                         data.farClippingPlane);
    data.nearFarRatio = camera.getNearFarRatio();
    if (computesPlanes(camera)) { // what it has come to in a frame is not what it was given
        data.nearClippingPlane = defaultNear;
        data.farClippingPlane = defaultFar;
    }
    readView(data, camera.getViewMatrix(), 1);
}

void check(CameraData const& data) {
    bool const perspective = data.fieldOfView > 0 && data.fieldOfView < 180 && data.aspectRatio > 0 &&
                             data.nearClippingPlane > 0 && data.farClippingPlane > data.nearClippingPlane &&
                             std::isfinite(data.aspectRatio) && std::isfinite(data.farClippingPlane);
    osg::Vec3d const forward = toOsg(data.center) - toOsg(data.eye);
    double const side = (forward ^ toOsg(data.up)).length();
    if (!perspective || !(side > 0) || !std::isfinite(side) || !(data.nearFarRatio >= 0))
        throw std::invalid_argument(
            "the camera data is no view: it needs 0 < near < far, an opening angle between 0 and 180 degrees, "
            "an eye apart from the center, and an up that is not along the view");
}

} // namespace

CameraData::CameraData(osg::Camera const* camera) {
    if (camera)
        readCamera(*this, *camera);
}

CameraData::CameraData(osgViewer::Viewer const* viewer) {
    if (!viewer || !viewer->getCamera())
        return;
    readCamera(*this, *viewer->getCamera());
    // The camera takes the manipulator's view over with the next frame only.
    if (auto const* manipulator = viewer->getCameraManipulator()) {
        readView(*this, manipulator->getInverseMatrix(), 1);
        osg::Vec3d eye, center, up;
        auto const* standard = dynamic_cast<osgGA::StandardManipulator const*>(manipulator);
        if (!standard)
            return;
        standard->getTransformation(eye, center, up);
        double const distance = (center - eye).length();
        if (distance > 0)
            readView(*this, manipulator->getInverseMatrix(), distance);
    }
}

void CameraData::applyTo(osg::Camera* camera) const {
    if (!camera)
        throw std::invalid_argument("a view cannot be applied to no camera");
    if (!valid)
        return;
    check(*this);
    if (!hasDefaultPlanes(*this))
        camera->setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
    else if (!computesPlanes(*camera) && !hasDefaultPlanes(CameraData(camera)))
        camera->setComputeNearFarMode(osg::Camera::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    camera->setNearFarRatio(nearFarRatio);
    camera->setProjectionMatrixAsPerspective(fieldOfView, aspectRatio, nearClippingPlane, farClippingPlane);
    camera->setViewMatrixAsLookAt(toOsg(eye), toOsg(center), toOsg(up));
}

void CameraData::applyTo(osgViewer::Viewer* viewer) const {
    if (!viewer)
        throw std::invalid_argument("a view cannot be applied to no viewer");
    if (!valid)
        return;
    applyTo(viewer->getCamera());
    if (auto* manipulator = dynamic_cast<osgGA::StandardManipulator*>(viewer->getCameraManipulator()))
        manipulator->setTransformation(toOsg(eye), toOsg(center), toOsg(up));
    else if (auto* other = viewer->getCameraManipulator())
        other->setByInverseMatrix(viewer->getCamera()->getViewMatrix());
}

} // namespace hyxOSG
