// The handler that picks and drags bodies.
#include "platform/hyxOSG/picking/pick_handler.h"

#include "binding/vocabulary/rows.h"

#include <osg/Camera>
#include <osg/Group>
#include <osgViewer/Viewer>

namespace {

constexpr Declared pick_handler_rows[] = {
    FUNCTION(new_PickHandler, NEW(hyxOSG::PickHandler, (osgViewer::Viewer*, osg::Group*), nullptr)),
    FUNCTION(PickHandler_reset, METHOD(hyxOSG::PickHandler, reset, ())),
    FUNCTION(PickHandler_setActivateModKeyMask, METHOD(hyxOSG::PickHandler, setActivateModKeyMask, (unsigned int))),
    FUNCTION(PickHandler_getActivateModKeyMask, METHOD(hyxOSG::PickHandler, getActivateModKeyMask, () const)),
    FUNCTION(PickHandler_setActivateMouseButton, METHOD(hyxOSG::PickHandler, setActivateMouseButton, (unsigned int))),
    FUNCTION(PickHandler_getActivateMouseButton, METHOD(hyxOSG::PickHandler, getActivateMouseButton, () const)),
    FUNCTION(PickHandler_setSimulation, METHOD(hyxOSG::PickHandler, setSimulation, (hyxSDK::Simulation*))),
    FUNCTION(PickHandler_setCamera, METHOD(hyxOSG::PickHandler, setCamera, (osg::Camera*))),
    FUNCTION(PickHandler_getCamera, METHOD(hyxOSG::PickHandler, getCamera, ())),
    FUNCTION(PickHandler_updateRenderState, METHOD(hyxOSG::PickHandler, updateRenderState, ())),
    FUNCTION(PickHandler_createMouseSpringRendering, METHOD(hyxOSG::PickHandler, createMouseSpringRendering, (float))),
    FUNCTION(PickHandler_intersect, METHOD(hyxOSG::PickHandler, intersect, (hyx::Vec3 const&, hyx::Vec3 const&, bool)),
             METHOD(hyxOSG::PickHandler, intersect, (float, float, bool))),
    FUNCTION(PickHandler_pick, METHOD(hyxOSG::PickHandler, pick, (float, float))),
    FUNCTION(PickHandler_getNearFarPoints,
             METHOD(hyxOSG::PickHandler, getNearFarPoints,
                    (osg::Camera const*, hyx::Vec3&, hyx::Vec3&, float, float, bool) const, false)),
    FUNCTION(PickHandler_keyboard,
             LISTENER(METHOD(hyxOSG::PickHandler, keyboard, (int, unsigned int, float, float, bool)), 79,
                      "swig/configuration/hyxPython/hyxSDK")),
    FUNCTION(PickHandler_mouse, LISTENER(METHOD(hyxOSG::PickHandler, mouse,
                                                (hyxSDK::GuiEventListener::MouseButtonMask,
                                                 hyxSDK::GuiEventListener::MouseState, float, float)),
                                         80, "swig/configuration/hyxPython/hyxSDK")),
    FUNCTION(PickHandler_mouseDragged, LISTENER(METHOD(hyxOSG::PickHandler, mouseDragged,
                                                       (hyxSDK::GuiEventListener::MouseButtonMask, float, float)),
                                                82, "swig/configuration/hyxPython/hyxSDK")),
    FUNCTION(PickHandler_update,
             LISTENER(METHOD(hyxOSG::PickHandler, update, (float, float)), 78, "swig/configuration/hyxPython/hyxSDK")),
    REGISTER(hyxOSG::PickHandler, PickHandler),
    INIT(PickHandler),
};

} // namespace

ROWS(pick_handler_rows);
