// Window events as calls of listeners.
#include "reference/machinery/viewing/listener_bridge.h"

#include <osg/Camera>

namespace hyxOSG {

using Event = osgGA::GUIEventAdapter;
using Listener = hyxSDK::GuiEventListener;

bool ListenerBridge::dispatch(Event const& event, osg::Camera const& camera, Listeners const& listeners) {
    if (event.getEventType() == Event::FRAME) {
        frame(camera, listeners);
        return false;
    }
    m_x = event.getX() - event.getXmin();
    m_y = event.getMouseYOrientation() == Event::Y_INCREASING_UPWARDS ? event.getY() - event.getYmin()
                                                                      : event.getYmax() - event.getY();
    for (auto const& listener : listeners)
        if (listener->isEnabled() && give(event, *listener))
            return true;
    return false;
}

bool ListenerBridge::give(Event const& event, Listener& listener) const {
    auto const pressed = Listener::MouseButtonMask(event.getButton());
    switch (event.getEventType()) {
    case Event::PUSH:
        return listener.wants(Listener::MOUSE) && listener.mouse(pressed, Listener::DOWN, m_x, m_y);
    case Event::RELEASE:
        return listener.wants(Listener::MOUSE) && listener.mouse(pressed, Listener::UP, m_x, m_y);
    case Event::DOUBLECLICK:
        return listener.wants(Listener::MOUSE) && listener.mouse(pressed, Listener::DOUBLE_CLICK, m_x, m_y);
    case Event::DRAG:
        return listener.wants(Listener::MOUSE | Listener::MOUSE_DRAGGED) &&
               listener.mouseDragged(Listener::MouseButtonMask(event.getButtonMask()), m_x, m_y);
    case Event::MOVE:
        return listener.wants(Listener::MOUSE_MOVED) && listener.mouseMoved(m_x, m_y);
    case Event::KEYDOWN:
    case Event::KEYUP:
        return listener.wants(Listener::KEYBOARD) && listener.keyboard(event.getKey(), event.getModKeyMask(), m_x, m_y,
                                                                       event.getEventType() == Event::KEYDOWN);
    default:
        return false;
    }
}

void ListenerBridge::frame(osg::Camera const& camera, Listeners const& listeners) {
    bool const moved = camera.getViewMatrix() != m_view;
    m_view = camera.getViewMatrix();
    hyx::AffineMatrix4x4 const inverse(osg::Matrixd::inverse(m_view).ptr());
    for (auto const& listener : listeners) {
        if (!listener->isEnabled())
            continue;
        if (moved)
            listener->setInverseTransform(inverse);
        if (listener->wants(Listener::UPDATE))
            listener->update(m_x, m_y);
    }
}

} // namespace hyxOSG
