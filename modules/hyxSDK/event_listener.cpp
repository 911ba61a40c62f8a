// Listeners to steps, whose methods Python can override, and the base of input listeners.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "modules/hyxSDK/event_listener_director.h"
#include "platform/hyxSDK/gui_event_listener.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared event_listener_rows[] = {
    FUNCTION(new_EventListener,
             NEW_DIRECTOR(hyxSDK::EventListener, SwigDirector_EventListener, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_EventListener, DELETE(hyxSDK::EventListener)),
    FUNCTION(disown_EventListener, DISOWN(hyxSDK::EventListener)),
    FUNCTION(EventListener_setMask, VIRTUAL(hyxSDK::EventListener, setMask, (int))),
    FUNCTION(EventListener_getMask, METHOD(hyxSDK::EventListener, getMask, () const)),
    FUNCTION(EventListener_addNotification, VIRTUAL(hyxSDK::EventListener, addNotification, ())),
    FUNCTION(EventListener_removeNotification, VIRTUAL(hyxSDK::EventListener, removeNotification, ())),
    FUNCTION(EventListener_preCollide, VIRTUAL(hyxSDK::EventListener, preCollide, (hyx::TimeStamp))),
    FUNCTION(EventListener_pre, VIRTUAL(hyxSDK::EventListener, pre, (hyx::TimeStamp))),
    FUNCTION(EventListener_post, VIRTUAL(hyxSDK::EventListener, post, (hyx::TimeStamp))),
    FUNCTION(EventListener_last, VIRTUAL(hyxSDK::EventListener, last, (hyx::TimeStamp))),
    FUNCTION(EventListener_setEnable, METHOD(hyxSDK::EventListener, setEnable, (bool))),
    FUNCTION(EventListener_isEnabled, METHOD(hyxSDK::EventListener, isEnabled, () const)),
    FUNCTION(EventListener_getSimulation, SHARED(METHOD(hyxSDK::EventListener, getSimulation, () const))),
    REGISTER(hyxSDK::EventListener, EventListener),
    INIT(EventListener),
    FUNCTION(delete_GuiEventListener, DELETE(hyxSDK::GuiEventListener)),
    FUNCTION(GuiEventListener_mouseDragged, VIRTUAL(hyxSDK::GuiEventListener, mouseDragged,
                                                    (hyxSDK::GuiEventListener::MouseButtonMask, float, float))),
    FUNCTION(GuiEventListener_mouseMoved, VIRTUAL(hyxSDK::GuiEventListener, mouseMoved, (float, float))),
    FUNCTION(GuiEventListener_mouse,
             VIRTUAL(hyxSDK::GuiEventListener, mouse,
                     (hyxSDK::GuiEventListener::MouseButtonMask, hyxSDK::GuiEventListener::MouseState, float, float))),
    FUNCTION(GuiEventListener_keyboard,
             VIRTUAL(hyxSDK::GuiEventListener, keyboard, (int, unsigned int, float, float, bool))),
    FUNCTION(GuiEventListener_update, VIRTUAL(hyxSDK::GuiEventListener, update, (float, float))),
    FUNCTION(GuiEventListener_setInverseTransform,
             VIRTUAL(hyxSDK::GuiEventListener, setInverseTransform, (hyx::AffineMatrix4x4 const&))),
    REGISTER(hyxSDK::GuiEventListener, GuiEventListener),
    INIT(GuiEventListener),
};

} // namespace

ROWS(event_listener_rows);
