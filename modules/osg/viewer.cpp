// The camera, the viewer and its windows.
#include "modules/osg/scene_graph_rows.h"
#include "platform/osg/attachment.h"

#include <osg/Camera>
#include <osg/Viewport>
#include <osgGA/CameraManipulator>
#include <osgGA/EventQueue>
#include <osgViewer/GraphicsWindow>
#include <osgViewer/Viewer>

#include <cmath>
#include <stdexcept>

namespace {

void perspective(osg::Camera& self, double degrees, double ratio, double near, double far) {
    if (!(degrees > 0 && degrees < 180 && ratio > 0 && near > 0 && far > near && std::isfinite(ratio * far)))
        throw std::invalid_argument("a perspective needs an angle of 0 to 180 degrees, a positive ratio of width to "
                                    "height, and a far plane beyond its near plane, which lies before the eye");
    self.setProjectionMatrixAsPerspective(degrees, ratio, near, far);
}

void parallel(osg::Camera& self, double left, double right, double bottom, double top, double near, double far) {
    double const volume = (right - left) * (top - bottom) * (far - near);
    if (volume == 0 || !std::isfinite(volume))
        throw std::invalid_argument("a parallel projection needs a volume that is not empty");
    self.setProjectionMatrixAsOrtho(left, right, bottom, top, near, far);
}

void set_viewport(osg::Camera& self, int x, int y, int width, int height) {
    if (width < 1 || height < 1)
        throw std::invalid_argument("a viewport is at least a pixel wide and high");
    self.setViewport(x, y, width, height);
}

void look_at(osg::Camera& self, osg::Vec3d const& eye, osg::Vec3d const& center, osg::Vec3d const& up) {
    self.setViewMatrixAsLookAt(eye, center, up);
}

osg::Matrixd view_matrix(osg::Camera const& self) {
    return self.getViewMatrix();
}

osg::Matrixd projection_matrix(osg::Camera const& self) {
    return self.getProjectionMatrix();
}

void set_view_matrix(osg::Camera& self, osg::Matrixd const& matrix) {
    self.setViewMatrix(matrix);
}

void set_projection_matrix(osg::Camera& self, osg::Matrixd const& matrix) {
    self.setProjectionMatrix(matrix);
}

void set_final_draw_callback(osg::Camera& self, osg::Camera::DrawCallback* callback) {
    self.setFinalDrawCallback(callback);
}

unsigned int cull_mask(osg::Camera const& self) {
    return self.getCullMask();
}

void set_cull_mask(osg::Camera& self, unsigned int mask) {
    self.setCullMask(mask);
}

osg::Vec4f clear_color(osg::Camera const& self) {
    return self.getClearColor();
}

unsigned int width(osg::Viewport const& self) {
    return static_cast<unsigned int>(self.width());
}

unsigned int height(osg::Viewport const& self) {
    return static_cast<unsigned int>(self.height());
}

void frame(osgViewer::Viewer& self) {
    self.frame();
}

void home(osgViewer::Viewer& self) {
    self.home();
}

void set_manipulator(osgViewer::Viewer& self, osgGA::CameraManipulator* manipulator) {
    self.setCameraManipulator(manipulator);
}

void set_scene(osgViewer::Viewer& self, osg::Node* node) {
    if (node)
        osg::requireAttachable(*self.getCamera(), *node);
    self.setSceneData(node);
}

osg::Node* scene(osgViewer::Viewer& self) {
    return self.getSceneData();
}

osg::Camera* camera(osgViewer::Viewer& self) {
    return self.getCamera();
}

osgGA::EventQueue* event_queue(osgViewer::Viewer& self) {
    return self.getEventQueue();
}

osgGA::CameraManipulator* manipulator(osgViewer::Viewer& self) {
    return self.getCameraManipulator();
}

osgGA::EventQueue* window_queue(osgViewer::GraphicsWindow& self) {
    return self.getEventQueue();
}

osgViewer::GraphicsWindow* window(osg::Camera& self) {
    return dynamic_cast<osgViewer::GraphicsWindow*>(self.getGraphicsContext());
}

constexpr Declared viewer_rows[] = {
    FUNCTION(new_Camera, NEW(osg::Camera, ())),
    FUNCTION(Camera_setViewMatrixAsLookAt, ADAPTER(osg::Camera, setViewMatrixAsLookAt, look_at,
                                                   (osg::Vec3d const&, osg::Vec3d const&, osg::Vec3d const&))),
    FUNCTION(Camera_getViewMatrix, ADAPTER(osg::Camera, getViewMatrix, view_matrix, () const)),
    FUNCTION(Camera_setViewMatrix, ADAPTER(osg::Camera, setViewMatrix, set_view_matrix, (osg::Matrixd const&))),
    FUNCTION(Camera_getProjectionMatrix, ADAPTER(osg::Camera, getProjectionMatrix, projection_matrix, () const)),
    FUNCTION(Camera_setProjectionMatrix,
             ADAPTER(osg::Camera, setProjectionMatrix, set_projection_matrix, (osg::Matrixd const&))),
    FUNCTION(Camera_setProjectionMatrixAsPerspective,
             ADAPTER(osg::Camera, setProjectionMatrixAsPerspective, perspective, (double, double, double, double))),
    FUNCTION(Camera_setProjectionMatrixAsOrtho, ADAPTER(osg::Camera, setProjectionMatrixAsOrtho, parallel,
                                                        (double, double, double, double, double, double))),
    FUNCTION(Camera_setClearColor, METHOD(osg::Camera, setClearColor, (osg::Vec4f const&))),
    FUNCTION(Camera_setFinalDrawCallback,
             ADAPTER(osg::Camera, setFinalDrawCallback, set_final_draw_callback, (osg::Camera::DrawCallback*))),
    FUNCTION(Camera_getCullMask, ADAPTER(osg::Camera, getCullMask, cull_mask, () const)),
    FUNCTION(Camera_setCullMask, ADAPTER(osg::Camera, setCullMask, set_cull_mask, (unsigned int))),
    FUNCTION(Camera_getClearColor, ADAPTER(osg::Camera, getClearColor, clear_color, () const)),
    FUNCTION(Camera_setViewport, ADAPTER(osg::Camera, setViewport, set_viewport, (int, int, int, int))),
    FUNCTION(Camera_getViewport, SHARED(METHOD(osg::Camera, getViewport, ()))),
    FUNCTION(Camera_getGraphicsWindow, SHARED(ADAPTER(osg::Camera, getGraphicsWindow, window, ()))),
    SHARED_CLASS_ROWS(osg::Camera, Camera),
    FUNCTION(Viewport_width, ADAPTER(osg::Viewport, width, width, () const)),
    FUNCTION(Viewport_height, ADAPTER(osg::Viewport, height, height, () const)),
    SHARED_CLASS_ROWS(osg::Viewport, Viewport),

    FUNCTION(new_Viewer, NEW(osgViewer::Viewer, ())),
    FUNCTION(Viewer_frame, ADAPTER(osgViewer::Viewer, frame, frame, ())),
    FUNCTION(Viewer_updateTraversal, METHOD(osgViewer::Viewer, updateTraversal, ())),
    FUNCTION(Viewer_home, ADAPTER(osgViewer::Viewer, home, home, ())),
    FUNCTION(Viewer_done, METHOD(osgViewer::Viewer, done, () const)),
    FUNCTION(Viewer_setSceneData, ADAPTER(osgViewer::Viewer, setSceneData, set_scene, (osg::Node*))),
    FUNCTION(Viewer_getSceneData, SHARED(ADAPTER(osgViewer::Viewer, getSceneData, scene, ()))),
    FUNCTION(Viewer_getCamera, SHARED(ADAPTER(osgViewer::Viewer, getCamera, camera, ()))),
    FUNCTION(Viewer_getEventQueue, SHARED(ADAPTER(osgViewer::Viewer, getEventQueue, event_queue, ()))),
    FUNCTION(Viewer_setCameraManipulator,
             ADAPTER(osgViewer::Viewer, setCameraManipulator, set_manipulator, (osgGA::CameraManipulator*))),
    FUNCTION(Viewer_getCameraManipulator, SHARED(ADAPTER(osgViewer::Viewer, getCameraManipulator, manipulator, ()))),
    SHARED_CLASS_ROWS(osgViewer::Viewer, Viewer),
    FUNCTION(GraphicsWindow_getEventQueue, SHARED(ADAPTER(osgViewer::GraphicsWindow, getEventQueue, window_queue, ()))),
    SHARED_CLASS_ROWS(osgViewer::GraphicsWindow, GraphicsWindow),
};

} // namespace

ROWS(viewer_rows);
