// Finding the listeners of each event.

#include "reference/hyxOSG/capture/embedded_events.h"

#include <osgViewer/Viewer>

namespace hyxOSG {

EmbeddedEvents::EmbeddedEvents(osgViewer::Viewer* viewer, osg::Group* root)
    : m_viewer(viewer), m_pickHandler(new PickHandler(viewer, root)) {}

void EmbeddedEvents::setSimulation(hyxSDK::Simulation* simulation) {
    m_simulation = simulation;
    m_pickHandler->setSimulation(simulation);
}

bool EmbeddedEvents::handle(osgGA::GUIEventAdapter const& event, osgGA::GUIActionAdapter&) {
    if (!m_simulation) {
        return false;
    }
    ListenerBridge::Listeners listeners;
    listeners.push_back(m_pickHandler);
    for (auto const& listener : m_simulation->getEventListeners()) {
        if (auto* const input = dynamic_cast<hyxSDK::GuiEventListener*>(listener.get())) {
            listeners.push_back(input);
        }
    }
    return m_bridge.dispatch(event, *m_viewer->getCamera(), listeners);
}

} // namespace hyxOSG
