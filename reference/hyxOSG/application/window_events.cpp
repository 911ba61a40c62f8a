// Follows the events of the window.
#include "reference/hyxOSG/application/window_events.h"

#include "platform/hyx/objects/notify.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxSDK/simulation.h"

#include <exception>

namespace hyxOSG {

using Event = osgGA::GUIEventAdapter;

bool WindowEvents::handle(Event const& event, osgGA::GUIActionAdapter&) {
    if (m_bridge.dispatch(event, *m_application->getCamera(), findListeners()))
        return true;
    switch (event.getEventType()) {
    case Event::RESIZE:
        m_application->getSceneDecorator()->updateWindowSize(event.getWindowWidth(), event.getWindowHeight());
        return false;
    case Event::KEYDOWN:
        try {
            return handleKey(event.getKey());
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

bool WindowEvents::handleKey(int key) {
    if (m_application->getCallback(key).isValid()) {
        m_application->createSceneFromKey(key);
        return true;
    }
    switch (key) {
    case Event::KEY_Escape:
        if (m_application->getQuitEventSetsDone())
            m_application->stop(m_application->getExitCode());
        return true;
    case 'e':
        m_application->setAutoStepping(!m_application->getAutoStepping());
        return true;
    case '.':
        m_application->stepSimulation();
        return true;
    case 'r':
        m_application->reloadScene();
        return true;
    case 'f':
        m_application->fitSceneIntoView();
        return true;
    case Event::KEY_Page_Down:
        m_application->createNextScene();
        return true;
    case Event::KEY_Page_Up:
        m_application->createPreviousScene();
        return true;
    case Event::KEY_F9:
        m_application->setEnableDebugRenderer(!m_application->getEnableDebugRenderer());
        return true;
    case Event::KEY_F12:
        m_application->getSimulation()->save(m_application->getSaveSceneFilename());
        return true;
    default:
        return false;
    }
}

} // namespace hyxOSG
