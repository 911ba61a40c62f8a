// Tells the library's own listeners of the events of a window.
#pragma once

#include "platform/hyxSDK/gui_event_listener.h"

#include <osg/Matrixd>
#include <osg/Vec2>
#include <osgGA/GUIEventAdapter>

namespace osg {
class Camera;
} // namespace osg

namespace hyxOSG {

/// Translates the events of the scene-graph library; positions become pixels from the lower left corner.
class ListenerBridge {
public:
    using Listeners = hyx::Vector<hyx::ref_ptr<hyxSDK::GuiEventListener>>;

    /// Gives the event to the listeners, in order, until one uses it up. Returns whether one did.
    bool dispatch(osgGA::GUIEventAdapter const& event, osg::Camera const& camera, Listeners const& listeners);

    /// Where the pointer was last, in pixels from the lower left corner.
    osg::Vec2 pointer() const { return {m_x, m_y}; }

private:
    bool give(osgGA::GUIEventAdapter const& event, hyxSDK::GuiEventListener& listener) const;
    void frame(osg::Camera const& camera, Listeners const& listeners);

    float m_x = 0; ///< of the pointer, pixels
    float m_y = 0;
    osg::Matrixd m_view; ///< that listeners know
};

} // namespace hyxOSG
