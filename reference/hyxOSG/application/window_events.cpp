// Follows the events of the window.
#include "reference/hyxOSG/application/window_events.h"

#include "platform/hyx/objects/notify.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxSDK/simulation.h"

#include <osgViewer/GraphicsWindow>

#include <exception>

namespace hyxOSG {

using Event = osgGA::GUIEventAdapter;

bool WindowEvents::handle(Event const& event, osgGA::GUIActionAdapter&) {
    m_count += event.getEventType() != Event::FRAME;
    if (m_bridge.dispatch(event, *m_application->getCamera(), findListeners()))
        return true;
    switch (event.getEventType()) {
    case Event::RESIZE:
        resize(event.getWindowWidth(), event.getWindowHeight());
        return false;
    case Event::PUSH:
    case Event::RELEASE:
        followClick(event);
        return false;
    case Event::KEYDOWN:
        try {
            return m_application->followKey(event.getKey());
        } catch (std::exception const& error) { // a key must not end the loop
            hyx::Notify::instance().notify(hyx::Notify::NOTIFY_ERROR, error.what());
            return true;
        }
    default:
        return false;
    }
}

ListenerBridge::Listeners WindowEvents::findListeners() const {
    ListenerBridge::Listeners found;
    if (PickHandler* handler = m_application->getPickHandler())
        found.push_back(handler);
    for (auto const& listener : m_application->getSimulation()->getEventListeners())
        if (auto* gui = dynamic_cast<hyxSDK::GuiEventListener*>(listener.get()))
            found.push_back(gui);
    return found;
}

void WindowEvents::followClick(Event const& event) {
    constexpr float farthest = 3; // pixels that a hand may tremble
    constexpr int modifiers = Event::MODKEY_CTRL | Event::MODKEY_SHIFT | Event::MODKEY_ALT | Event::MODKEY_META;
    osg::Vec2 const place = m_bridge.pointer();
    bool const left = event.getButton() == Event::LEFT_MOUSE_BUTTON;
    if (event.getEventType() == Event::PUSH) {
        m_pressed.reset();
        if (left && (event.getModKeyMask() & modifiers) == 0)
            m_pressed = place;
        return;
    }
    PickHandler* handler = m_application->getPickHandler();
    if (left && m_pressed && handler && (place - *m_pressed).length() <= farthest)
        m_application->setSelection(handler->intersect(place.x(), place.y(), false).getRigidBody());
    m_pressed.reset();
}

/// Not every display keeps users from changing the size.
void WindowEvents::resize(int width, int height) {
    osg::GraphicsContext* context = m_application->getCamera()->getGraphicsContext();
    auto* const window = dynamic_cast<osgViewer::GraphicsWindow*>(context);
    bool const changed = m_width > 0 && (width != m_width || height != m_height);
    if (window && changed && !m_application->getAllowWindowResizing()) {
        osg::GraphicsContext::Traits const* place = window->getTraits();
        window->setWindowRectangle(place->x, place->y, m_width, m_height);
        return;
    }
    m_width = width;
    m_height = height;
    m_application->getSceneDecorator()->updateWindowSize(width, height);
}

} // namespace hyxOSG
