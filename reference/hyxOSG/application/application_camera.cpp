// The application's camera: view, home, orbit, grid and coordinate system.
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/viewing/wheel_zoom.h"

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

void checkView(hyx::Vec3 const& eye, hyx::Vec3 const& center, hyx::Vec3 const& up) {
    double const side = (center - eye).cross(up).length();
    if (!(side > 0) || !std::isfinite(side))
        throw std::invalid_argument("eye and center must be apart, and up must not be along the view");
}

/// Turning keeps Z upright, unless the view was set up otherwise.
void setHome(osgGA::OrbitManipulator& orbit, osg::Vec3d const& eye, osg::Vec3d const& center, osg::Vec3d const& up) {
    osg::Vec3d const vertical(0, 0, 1);
    bool const upright = (up ^ vertical).length() < 1e-9 * up.length() && ((center - eye) ^ vertical).length() > 0;
    orbit.setVerticalAxisFixed(upright);
    orbit.setHomePosition(eye, center, up);
    orbit.home(0);
}

} // namespace

osg::ref_ptr<osgGA::OrbitManipulator> ExampleApplication::Implementation::makeOrbit() {
    osg::ref_ptr<osgGA::OrbitManipulator> orbit = new osgGA::OrbitManipulator;
    orbit->setAllowThrow(false);
    orbit->setAutoComputeHomePosition(false);
    boundZoom(*orbit);
    setHome(*orbit, osg::Vec3d(0, -15, 6), osg::Vec3d(), osg::Vec3d(0, 0, 1));
    return orbit;
}

CameraData ExampleApplication::getCameraData() {
    return CameraData(static_cast<osgViewer::Viewer const*>(m_implementation->ensureWindow(*this)->viewer()));
}

void ExampleApplication::applyCameraData(CameraData const& cameraData) {
    cameraData.applyTo(m_implementation->ensureWindow(*this)->viewer());
}

void ExampleApplication::getCameraHome(hyx::Vec3& eye, hyx::Vec3& center, hyx::Vec3& up) const {
    osg::Vec3d homeEye, homeCenter, homeUp;
    m_implementation->orbit->getHomePosition(homeEye, homeCenter, homeUp);
    eye = toHyx(homeEye);
    center = toHyx(homeCenter);
    up = toHyx(homeUp);
}

void ExampleApplication::setCameraHome(hyx::Vec3 const& eye, hyx::Vec3 const& center, hyx::Vec3 const& up) {
    checkView(eye, center, up);
    setHome(*m_implementation->orbit, toOsg(eye), toOsg(center), toOsg(up));
    m_implementation->homeSet = true;
}

bool ExampleApplication::isCameraHomeSet() const {
    return m_implementation->homeSet;
}

void ExampleApplication::setOrbitCamera(GeometryNode* node, double distance, double azimuth, double elevation,
                                        int mode) {
    hyx::Vec3 const eye(-std::sin(azimuth) * std::cos(elevation), -std::cos(azimuth) * std::cos(elevation),
                        std::sin(elevation));
    if (!(distance > 0))
        throw std::invalid_argument("the distance of an orbit camera must be positive");
    setOrbitCamera(node, eye * distance, hyx::Vec3(), hyx::Vec3(0, 0, 1), mode);
}

void ExampleApplication::setOrbitCamera(GeometryNode* node, hyx::Vec3 const& eye, hyx::Vec3 const& center,
                                        hyx::Vec3 const& up, int mode) {
    if (!node)
        return m_implementation->useOrbit();
    if (mode < 0 || mode > FollowManipulator::WHOLE_ROTATION)
        throw std::invalid_argument(
            "the mode of an orbit camera must be 0 (position), 1 (heading too) or 2 (whole rotation)");
    checkView(eye, center, up);
    m_implementation->follow = new FollowManipulator(node, FollowManipulator::Mode(mode));
    boundZoom(*m_implementation->follow);
    setHome(*m_implementation->follow, toOsg(eye), toOsg(center), toOsg(up));
    m_implementation->useManipulator(m_implementation->follow);
}

void ExampleApplication::Implementation::useManipulator(osgGA::CameraManipulator* manipulator) {
    if (window)
        window->viewer()->setCameraManipulator(manipulator, false);
}

void ExampleApplication::Implementation::useOrbit() {
    if (follow)
        useManipulator(orbit);
    follow = nullptr;
}

void ExampleApplication::Implementation::endFollowing() {
    if (!follow)
        return;
    osg::Vec3d eye, center, up;
    double const distance = follow->getDistance();
    follow->getInverseMatrix().getLookAt(eye, center, up, distance);
    orbit->setTransformation(eye, center, up);
    useOrbit();
}

void ExampleApplication::Implementation::takeFirstView(osg::BoundingBox const& box) {
    osg::Vec3d eye, center, up, homeEye, homeCenter, homeUp;
    orbit->getTransformation(eye, center, up);
    orbit->getHomePosition(homeEye, homeCenter, homeUp);
    bool const chosen = homeSet || follow || (eye - homeEye).length() > 1e-6 || (center - homeCenter).length() > 1e-6;
    if (chosen || !window || window->viewer()->getCameraManipulator() != orbit)
        return;
    double fieldOfView = 45, aspectRatio = 1, nearPlane, farPlane;
    if (!window->camera()->getProjectionMatrixAsPerspective(fieldOfView, aspectRatio, nearPlane, farPlane))
        return;
    osg::Vec3d backward(0.45, -1, 0.5);
    backward.normalize();
    constexpr double margin = 0.8; // of the half picture, to each side
    double const slope = margin * std::tan(osg::DegreesToRadians(fieldOfView / 2));
    double const distance = distanceToSee(box, backward, slope * aspectRatio, slope);
    orbit->setTransformation(box.center() + backward * distance, box.center(), homeUp);
}

void ExampleApplication::centerScene() {
    osg::BoundingSphere const bound = m_implementation->graph.sceneBound();
    if (!bound.valid())
        return;
    m_implementation->endFollowing();
    osg::Vec3d eye, center, up;
    m_implementation->orbit->getTransformation(eye, center, up);
    m_implementation->orbit->setTransformation(eye, bound.center(), up);
}

void ExampleApplication::fitSceneIntoView() {
    osg::BoundingSphere const bound = m_implementation->graph.sceneBound();
    if (!bound.valid() || !(bound.radius() > 0))
        return;
    m_implementation->endFollowing();
    double fieldOfView = 45, aspectRatio = 1, nearPlane, farPlane;
    if (m_implementation->window)
        m_implementation->window->camera()->getProjectionMatrixAsPerspective(fieldOfView, aspectRatio, nearPlane,
                                                                             farPlane);
    double const halfHeight = osg::DegreesToRadians(fieldOfView / 2);
    double const halfWidth = std::atan(std::tan(halfHeight) * aspectRatio);
    double const distance = bound.radius() / std::sin(std::min(halfHeight, halfWidth));
    osg::Vec3d eye, center, up;
    m_implementation->orbit->getTransformation(eye, center, up);
    osg::Vec3d backward = eye - center;
    if (backward.normalize() == 0)
        backward.set(0, -1, 0);
    m_implementation->orbit->setTransformation(bound.center() + backward * distance, bound.center(), up);
}

hyx::Vec3 ExampleApplication::getViewDirection() {
    CameraData const data = getCameraData();
    return (data.center - data.eye).normal();
}

osg::Camera* ExampleApplication::getCamera() {
    return m_implementation->window ? m_implementation->window->camera() : nullptr;
}

osgViewer::Viewer* ExampleApplication::getViewer() {
    return m_implementation->window ? m_implementation->window->viewer() : nullptr;
}

osgGA::MatrixManipulator* ExampleApplication::getCameraManipulator() {
    return m_implementation->window ? m_implementation->window->viewer()->getCameraManipulator() : nullptr;
}

osgGA::MatrixManipulator const* ExampleApplication::getCameraManipulator() const {
    return m_implementation->window ? m_implementation->window->viewer()->getCameraManipulator() : nullptr;
}

void ExampleApplication::setCoordinateSystemTransform(hyx::AffineMatrix4x4 const& transform) {
    m_implementation->graph.setTransform(transform);
}

hyx::AffineMatrix4x4 ExampleApplication::getCoordinateSystemTransform() const {
    return m_implementation->graph.transform();
}

void ExampleApplication::setDebugRenderInverseMatrix(hyx::AffineMatrix4x4 const& matrix) {
    m_implementation->graph.setDebugInverse(matrix);
}

void ExampleApplication::setGridSize(hyx::Vec2 const& size) {
    m_implementation->markers.setCellSize(size);
}

hyx::Vec2 ExampleApplication::getGridSize() const {
    return m_implementation->markers.cellSize();
}

void ExampleApplication::setGridResolution(hyx::Vec2u resolution) {
    m_implementation->markers.setResolution(resolution);
}

hyx::Vec2u ExampleApplication::getGridResolution() const {
    return m_implementation->markers.resolution();
}

void ExampleApplication::setEnableGrid(bool enable) {
    m_implementation->markers.showGrid(enable);
}

bool ExampleApplication::getEnableGrid() const {
    return m_implementation->markers.gridShown();
}

void ExampleApplication::setEnableCoordinateSystem(bool enable) {
    m_implementation->markers.showAxes(enable);
}

bool ExampleApplication::getEnableCoordinateSystem() const {
    return m_implementation->markers.axesShown();
}

} // namespace hyxOSG
