// The base of input listeners that work with the window's camera.
#pragma once

#include "platform/hyxSDK/gui_event_listener.h"
#include "platform/hyxSDK/pick_result.h"

namespace osg {
class Camera;
} // namespace osg

namespace hyxOSG {

/// Is called with the input events of the window once it was added to the simulation shown there, and can find what
/// is under the pointer.
class GuiEventListener : public hyxSDK::GuiEventListener {
public:
    /// \param mask the events that the listener gets; the default are buttons, keys and the call once a frame
    explicit GuiEventListener(hyxSDK::GuiEventListener::ActivationMask mask = DEFAULT);

    /// What lies under a point of the window. Empty before the listener was added to a simulation, for a null camera
    /// and where there is nothing.
    /// \param x,y pixels from the lower left corner
    /// \param all find everything under the point; false: only the nearest
    hyxSDK::PickResult intersect(float x, float y, osg::Camera const* camera, bool all = false);

    /// The place in the list of the contact whose first point is the nearest to the camera that the listener looked
    /// through last, or to the origin before that; the number of contacts when none of them has a point.
    size_t findIntersectGeometryIndex(hyxCollide::LocalGeometryContactVector const& contacts);

    /// The points of the near and far plane under a point of the window, in the frame of the simulation. A null camera,
    /// or one without a viewport, leaves the points as they are.
    /// \param x,y pixels from the lower left corner
    void getNearFarPoints(osg::Camera const* camera, hyx::Vec3& nearPoint, hyx::Vec3& farPoint, float x, float y);

protected:
    ~GuiEventListener() override;

private:
    hyx::Vec3 m_eye;
};

} // namespace hyxOSG
