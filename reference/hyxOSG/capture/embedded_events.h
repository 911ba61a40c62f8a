// The forwarded input of an embedded window, as a simulation's listeners see it.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/machinery/viewing/listener_bridge.h"

#include <osgGA/GUIEventHandler>

namespace hyxOSG {

/// Gives each event to a pick handler and then to the listeners of the simulation; one may use it up, so that it does
/// not move the camera.
class EmbeddedEvents : public osgGA::GUIEventHandler {
public:
    /// \param viewer draws the window; it holds this handler
    /// \param root shows the spring by which a body is dragged
    EmbeddedEvents(osgViewer::Viewer* viewer, osg::Group* root);

    /// Whose listeners and bodies take part; null for none.
    void setSimulation(hyxSDK::Simulation* simulation);

    hyxSDK::Simulation* simulation() const { return m_simulation.get(); }

    bool handle(osgGA::GUIEventAdapter const& event, osgGA::GUIActionAdapter&) override;

private:
    osgViewer::Viewer* m_viewer;
    hyx::ref_ptr<PickHandler> m_pickHandler;
    hyx::ref_ptr<hyxSDK::Simulation> m_simulation;
    ListenerBridge m_bridge;
};

} // namespace hyxOSG
