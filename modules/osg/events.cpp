// Input: events put in by hand, and the manipulators that move the camera.
#include "modules/osg/scene_graph_rows.h"

#include <osgGA/CameraManipulator>
#include <osgGA/EventQueue>
#include <osgGA/FlightManipulator>
#include <osgGA/NodeTrackerManipulator>
#include <osgGA/OrbitManipulator>
#include <osgGA/TerrainManipulator>
#include <osgGA/TrackballManipulator>

namespace {

using Queue = osgGA::EventQueue;

unsigned long waiting(Queue& self) {
    Queue::Events events;
    self.copyEvents(events);
    return events.size();
}

// Times are left to the queue: a viewer keeps back events that are later than its own clock.
void mouse_motion(Queue& self, float x, float y) {
    self.mouseMotion(x, y);
}

void mouse_press(Queue& self, float x, float y, unsigned int button) {
    self.mouseButtonPress(x, y, button);
}

void mouse_release(Queue& self, float x, float y, unsigned int button) {
    self.mouseButtonRelease(x, y, button);
}

void mouse_double(Queue& self, float x, float y, unsigned int button) {
    self.mouseDoubleButtonPress(x, y, button);
}

void mouse_scroll(Queue& self, int motion) {
    self.mouseScroll(static_cast<osgGA::GUIEventAdapter::ScrollingMotion>(motion));
}

void key_press(Queue& self, int key) {
    self.keyPress(key);
}

void key_release(Queue& self, int key) {
    self.keyRelease(key);
}

void resize(Queue& self, int x, int y, int width, int height) {
    self.windowResize(x, y, width, height);
}

void close_window(Queue& self) {
    self.closeWindow();
}

void set_modifiers(Queue& self, unsigned int mask) {
    self.getCurrentEventState()->setModKeyMask(mask);
}

void set_mouse_range(Queue& self, float left, float bottom, float right, float top) {
    self.setMouseInputRange(left, bottom, right, top);
}

osg::Matrixd matrix(osgGA::CameraManipulator const& self) {
    return self.getMatrix();
}

osg::Matrixd inverse_matrix(osgGA::CameraManipulator const& self) {
    return self.getInverseMatrix();
}

void set_home(osgGA::CameraManipulator& self, osg::Vec3d const& eye, osg::Vec3d const& center, osg::Vec3d const& up) {
    self.setHomePosition(eye, center, up);
}

void set_node(osgGA::CameraManipulator& self, osg::Node* node) {
    self.setNode(node);
}

osg::Vec3d orbit_center(osgGA::OrbitManipulator const& self) {
    return self.getCenter();
}

constexpr Declared events_rows[] = {
    FUNCTION(new_EventQueue, NEW(osgGA::EventQueue, ())),
    FUNCTION(EventQueue_mouseMotion, ADAPTER(osgGA::EventQueue, mouseMotion, mouse_motion, (float, float))),
    FUNCTION(EventQueue_mouseButtonPress,
             ADAPTER(osgGA::EventQueue, mouseButtonPress, mouse_press, (float, float, unsigned int))),
    FUNCTION(EventQueue_mouseButtonRelease,
             ADAPTER(osgGA::EventQueue, mouseButtonRelease, mouse_release, (float, float, unsigned int))),
    FUNCTION(EventQueue_mouseDoubleButtonPress,
             ADAPTER(osgGA::EventQueue, mouseDoubleButtonPress, mouse_double, (float, float, unsigned int))),
    FUNCTION(EventQueue_mouseScroll, ADAPTER(osgGA::EventQueue, mouseScroll, mouse_scroll, (int))),
    FUNCTION(EventQueue_keyPress, ADAPTER(osgGA::EventQueue, keyPress, key_press, (int))),
    FUNCTION(EventQueue_keyRelease, ADAPTER(osgGA::EventQueue, keyRelease, key_release, (int))),
    FUNCTION(EventQueue_windowResize, ADAPTER(osgGA::EventQueue, windowResize, resize, (int, int, int, int))),
    FUNCTION(EventQueue_closeWindow, ADAPTER(osgGA::EventQueue, closeWindow, close_window, ())),
    FUNCTION(EventQueue_getNumEvents, ADAPTER(osgGA::EventQueue, getNumEvents, waiting, ())),
    FUNCTION(EventQueue_setModKeyMask, ADAPTER(osgGA::EventQueue, setModKeyMask, set_modifiers, (unsigned int))),
    FUNCTION(EventQueue_setMouseInputRange,
             ADAPTER(osgGA::EventQueue, setMouseInputRange, set_mouse_range, (float, float, float, float))),
    SHARED_CLASS_ROWS(osgGA::EventQueue, EventQueue),

    FUNCTION(CameraManipulator_getMatrix, ADAPTER(osgGA::CameraManipulator, getMatrix, matrix, () const)),
    FUNCTION(CameraManipulator_getInverseMatrix,
             ADAPTER(osgGA::CameraManipulator, getInverseMatrix, inverse_matrix, () const)),
    FUNCTION(CameraManipulator_setHomePosition, ADAPTER(osgGA::CameraManipulator, setHomePosition, set_home,
                                                        (osg::Vec3d const&, osg::Vec3d const&, osg::Vec3d const&))),
    FUNCTION(CameraManipulator_setNode, ADAPTER(osgGA::CameraManipulator, setNode, set_node, (osg::Node*))),
    SHARED_CLASS_ROWS(osgGA::CameraManipulator, CameraManipulator),
    SHARED_CLASS_ROWS(osgGA::StandardManipulator, StandardManipulator),
    FUNCTION(new_OrbitManipulator, NEW(osgGA::OrbitManipulator, ())),
    FUNCTION(OrbitManipulator_getCenter, ADAPTER(osgGA::OrbitManipulator, getCenter, orbit_center, () const)),
    FUNCTION(OrbitManipulator_setCenter, METHOD(osgGA::OrbitManipulator, setCenter, (osg::Vec3d const&))),
    FUNCTION(OrbitManipulator_getDistance, METHOD(osgGA::OrbitManipulator, getDistance, () const)),
    FUNCTION(OrbitManipulator_setDistance, METHOD(osgGA::OrbitManipulator, setDistance, (double))),
    SHARED_CLASS_ROWS(osgGA::OrbitManipulator, OrbitManipulator),
    FUNCTION(new_TrackballManipulator, NEW(osgGA::TrackballManipulator, ())),
    SHARED_CLASS_ROWS(osgGA::TrackballManipulator, TrackballManipulator),
    FUNCTION(new_TerrainManipulator, NEW(osgGA::TerrainManipulator, ())),
    SHARED_CLASS_ROWS(osgGA::TerrainManipulator, TerrainManipulator),
    FUNCTION(new_NodeTrackerManipulator, NEW(osgGA::NodeTrackerManipulator, ())),
    SHARED_CLASS_ROWS(osgGA::NodeTrackerManipulator, NodeTrackerManipulator),
    FUNCTION(new_FlightManipulator, NEW(osgGA::FlightManipulator, ())),
    SHARED_CLASS_ROWS(osgGA::FlightManipulator, FlightManipulator),
};

} // namespace

ROWS(events_rows);
