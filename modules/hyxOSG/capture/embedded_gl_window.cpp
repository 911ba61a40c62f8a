// The viewer in a host application's window.
#include "platform/hyxOSG/capture/embedded_gl_window.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared embedded_gl_window_rows[] = {
    FUNCTION(new_EmbeddedGLWindow, NEW(hyxOSG::EmbeddedGLWindow, ())),
    FUNCTION(delete_EmbeddedGLWindow, DELETE(hyxOSG::EmbeddedGLWindow)),
    FUNCTION(EmbeddedGLWindow_init, METHOD(hyxOSG::EmbeddedGLWindow, init, (int, int, int, int))),
    FUNCTION(EmbeddedGLWindow_resize, METHOD(hyxOSG::EmbeddedGLWindow, resize, (int, int, int, int))),
    FUNCTION(EmbeddedGLWindow_frame, METHOD(hyxOSG::EmbeddedGLWindow, frame, ())),
    FUNCTION(EmbeddedGLWindow_clear, METHOD(hyxOSG::EmbeddedGLWindow, clear, ())),
    FUNCTION(EmbeddedGLWindow_getWidth, METHOD(hyxOSG::EmbeddedGLWindow, getWidth, () const)),
    FUNCTION(EmbeddedGLWindow_getHeight, METHOD(hyxOSG::EmbeddedGLWindow, getHeight, () const)),
    FUNCTION(EmbeddedGLWindow_mouseMoveEvent, METHOD(hyxOSG::EmbeddedGLWindow, mouseMoveEvent, (int, int))),
    FUNCTION(EmbeddedGLWindow_mousePressEvent, METHOD(hyxOSG::EmbeddedGLWindow, mousePressEvent, (int, int, int))),
    FUNCTION(EmbeddedGLWindow_mouseReleaseEvent, METHOD(hyxOSG::EmbeddedGLWindow, mouseReleaseEvent, (int, int, int))),
    FUNCTION(EmbeddedGLWindow_keyPressEvent, METHOD(hyxOSG::EmbeddedGLWindow, keyPressEvent, (int, int))),
    FUNCTION(EmbeddedGLWindow_keyReleaseEvent, METHOD(hyxOSG::EmbeddedGLWindow, keyReleaseEvent, (int, int))),
    FUNCTION(EmbeddedGLWindow_wheelEvent, METHOD(hyxOSG::EmbeddedGLWindow, wheelEvent, (int))),
    FUNCTION(EmbeddedGLWindow_getEventQueue, METHOD(hyxOSG::EmbeddedGLWindow, getEventQueue, () const)),
    FUNCTION(EmbeddedGLWindow_setSimulation, METHOD(hyxOSG::EmbeddedGLWindow, setSimulation, (hyxSDK::Simulation*))),
    FUNCTION(EmbeddedGLWindow_getSimulation, METHOD(hyxOSG::EmbeddedGLWindow, getSimulation, () const)),
    FUNCTION(EmbeddedGLWindow_removeSimulation, METHOD(hyxOSG::EmbeddedGLWindow, removeSimulation, ())),
    FUNCTION(EmbeddedGLWindow_getRoot, METHOD(hyxOSG::EmbeddedGLWindow, getRoot, () const),
             METHOD(hyxOSG::EmbeddedGLWindow, getRoot, ())),
    FUNCTION(EmbeddedGLWindow_getCamera, METHOD(hyxOSG::EmbeddedGLWindow, getCamera, () const),
             METHOD(hyxOSG::EmbeddedGLWindow, getCamera, ())),
    FUNCTION(EmbeddedGLWindow_getSceneDecorator, METHOD(hyxOSG::EmbeddedGLWindow, getSceneDecorator, () const)),
    FUNCTION(EmbeddedGLWindow_fitSceneIntoView, METHOD(hyxOSG::EmbeddedGLWindow, fitSceneIntoView, ())),
    FUNCTION(EmbeddedGLWindow_getSceneRadius, METHOD(hyxOSG::EmbeddedGLWindow, getSceneRadius, (osg::Group*) const)),
    FUNCTION(EmbeddedGLWindow_setOrbitCamera,
             METHOD(hyxOSG::EmbeddedGLWindow, setOrbitCamera, (hyxOSG::GeometryNode*, hyx::Vec3 const&))),
    FUNCTION(EmbeddedGLWindow_setPolygonMode, METHOD(hyxOSG::EmbeddedGLWindow, setPolygonMode, (int))),
    FUNCTION(EmbeddedGLWindow_getPolygonMode, METHOD(hyxOSG::EmbeddedGLWindow, getPolygonMode, () const)),
    REGISTER(hyxOSG::EmbeddedGLWindow, EmbeddedGLWindow),
    INIT(EmbeddedGLWindow),
};

} // namespace

ROWS(embedded_gl_window_rows);
