// What listeners do unless they say otherwise: nothing.
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxSDK/gui_event_listener.h"

namespace hyxSDK {

void EventListener::addNotification() {}

void EventListener::removeNotification() {}

void EventListener::preCollide(hyx::TimeStamp) {}

void EventListener::pre(hyx::TimeStamp) {}

void EventListener::post(hyx::TimeStamp) {}

void EventListener::last(hyx::TimeStamp) {}

bool GuiEventListener::mouseDragged(MouseButtonMask, float, float) {
    return false;
}

bool GuiEventListener::mouseMoved(float, float) {
    return false;
}

bool GuiEventListener::mouse(MouseButtonMask, MouseState, float, float) {
    return false;
}

bool GuiEventListener::keyboard(int, unsigned int, float, float, bool) {
    return false;
}

void GuiEventListener::update(float, float) {}

void GuiEventListener::setInverseTransform(hyx::AffineMatrix4x4 const&) {}

} // namespace hyxSDK
