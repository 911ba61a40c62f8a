// Sets cameras up to orbit, and shoots rays through them.
#include "platform/hyxOSG/visuals/camera_functions.h"

#include "platform/hyxCollide/space.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/viewing/simulation_scene.h"
#include "reference/machinery/viewing/wheel_zoom.h"

#include <osg/Camera>
#include <osgGA/OrbitManipulator>
#include <osgViewer/Viewer>

namespace hyxOSG {
namespace {

/// An orbit manipulator whose turning button may be another one than the left.
class OrbitWithButton : public osgGA::OrbitManipulator {
public:
    explicit OrbitWithButton(int button) : m_button(button) {
        setAllowThrow(false);
        setVerticalAxisFixed(true);
        boundZoom(*this);
    }

protected:
    bool performMovement() override {
        // The base class turns with the left button; the chosen button and the left one change places.
        constexpr unsigned int left = osgGA::GUIEventAdapter::LEFT_MOUSE_BUTTON;
        unsigned int const chosen = 1u << (m_button - 1);
        if (m_button == 1 || !_ga_t0 || !_ga_t1)
            return osgGA::OrbitManipulator::performMovement();
        osg::ref_ptr<osgGA::GUIEventAdapter const> const first = _ga_t0, second = _ga_t1;
        unsigned int const mask = second->getButtonMask();
        unsigned int swapped = mask & ~(left | chosen);
        swapped |= (mask & left ? chosen : 0) | (mask & chosen ? left : 0);
        osg::ref_ptr<osgGA::GUIEventAdapter> const changed = new osgGA::GUIEventAdapter(*second);
        osg::ref_ptr<osgGA::GUIEventAdapter> const before = new osgGA::GUIEventAdapter(*first);
        changed->setButtonMask(swapped);
        before->setButtonMask(swapped);
        _ga_t0 = before;
        _ga_t1 = changed;
        bool const moved = osgGA::OrbitManipulator::performMovement();
        _ga_t0 = first;
        _ga_t1 = second;
        return moved;
    }

private:
    int m_button;
};

} // namespace

bool setOrbitCamera(osgViewer::Viewer* viewer, osg::Group* scene, hyx::Vec3 const& eye, hyx::Vec3 const& center,
                    hyx::Vec3 const& up, int mouseButton) {
    osg::Vec3d const view = toOsg(center) - toOsg(eye);
    bool const looks = view.length() > 0 && (view ^ toOsg(up)).length() > 1e-9 * view.length();
    if (!viewer || !scene || !looks || mouseButton < 1 || mouseButton > 3)
        return false;
    osg::ref_ptr<OrbitWithButton> const manipulator = new OrbitWithButton(mouseButton);
    manipulator->setNode(scene);
    manipulator->setHomePosition(toOsg(eye), toOsg(center), toOsg(up));
    viewer->setCameraManipulator(manipulator);
    viewer->home();
    manipulator->setTransformation(toOsg(eye), toOsg(center), toOsg(up));
    viewer->getCamera()->setViewMatrixAsLookAt(toOsg(eye), toOsg(center), toOsg(up));
    return true;
}

void getNearFarPoints(osg::Camera const* camera, float x, float y, hyx::Vec3& nearPoint, hyx::Vec3& farPoint) {
    if (!camera || !camera->getViewport())
        return;
    osg::Matrixd const toWindow =
        camera->getViewMatrix() * camera->getProjectionMatrix() * camera->getViewport()->computeWindowMatrix();
    osg::Matrixd toWorld;
    if (!toWorld.invert(toWindow))
        return;
    nearPoint = toHyx(osg::Vec3d(x, y, 0) * toWorld);
    farPoint = toHyx(osg::Vec3d(x, y, 1) * toWorld);
}

hyxCollide::LocalGeometryContact getHoveredGeometryContact(osg::Camera const* camera, hyxCollide::Space* space, float x,
                                                           float y) {
    if (!camera || !space)
        return {};
    hyx::Vec3 nearPoint, farPoint;
    getNearFarPoints(camera, x, y, nearPoint, farPoint);
    hyxCollide::RayHit const hit =
        space->castRay(toSimulation(space->getSimulation(), nearPoint), toSimulation(space->getSimulation(), farPoint));
    if (!hit.isValid())
        return {};
    hyxCollide::LocalGeometryContact contact(hit.geometry, nullptr);
    hyxCollide::ContactPoint point;
    point.point = hit.point;
    point.normal = hit.normal;
    contact.points().push_back(point);
    return contact;
}

} // namespace hyxOSG
