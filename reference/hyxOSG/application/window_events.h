// Keys and window changes of an application.
#pragma once

#include "platform/hyxOSG/application/example_application.h"
#include "reference/machinery/viewing/listener_bridge.h"

#include <osgGA/GUIEventHandler>

namespace hyxOSG {

/// Escape ends the loop; e pauses, full stop makes one step, r builds the scene anew, Page Down and Page Up change the
/// scene, f fits it into the view, F9 switches debug rendering, F12 saves the state; the key of a scene builds it.
///
/// Before that, the application's pick handler and the listeners of its simulation get the event, and may use it up.
class WindowEvents : public osgGA::GUIEventHandler {
public:
    /// The application's window takes this handler from its viewer when it ends, so that the application outlives it.
    explicit WindowEvents(ExampleApplication* application) : m_application(application) {}

    bool handle(osgGA::GUIEventAdapter const& event, osgGA::GUIActionAdapter&) override;

private:
    bool handleKey(int key);
    ListenerBridge::Listeners findListeners() const;

    ListenerBridge m_bridge;
    ExampleApplication* m_application;
};

} // namespace hyxOSG
