// Keys and window changes of an application.
#pragma once

#include "platform/hyxOSG/application/example_application.h"
#include "reference/machinery/viewing/listener_bridge.h"

#include <osgGA/GUIEventHandler>

#include <cstdint>
#include <optional>

namespace hyxOSG {

/// Keys go to the application. Before that, its pick handler and the listeners of its simulation get the event, and may
/// use it up.
class WindowEvents : public osgGA::GUIEventHandler {
public:
    /// The application's window takes this handler from its viewer when it ends, so that the application outlives it.
    explicit WindowEvents(ExampleApplication* application) : m_application(application) {}

    bool handle(osgGA::GUIEventAdapter const& event, osgGA::GUIActionAdapter&) override;

    /// Events that have come, besides those that each frame brings.
    std::uint64_t count() const { return m_count; }

private:
    void resize(int width, int height);
    /// A click, which is a press and a release of the left button in one place, selects what is there.
    void followClick(osgGA::GUIEventAdapter const& event);
    ListenerBridge::Listeners findListeners() const;

    ListenerBridge m_bridge;
    ExampleApplication* m_application;
    std::uint64_t m_count = 0;
    int m_width = 0; ///< the last size that the window was allowed
    int m_height = 0;
    std::optional<osg::Vec2> m_pressed; ///< where the left button went down alone, in pixels
};

} // namespace hyxOSG
