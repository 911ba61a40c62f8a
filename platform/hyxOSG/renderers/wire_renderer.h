// Wires as smooth tubes, reddened by their tension.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxUtil/spline.h"
#include "platform/hyxWire/wire.h"

#include <memory>

namespace osg {
class Group;
} // namespace osg

namespace hyxOSG {

/// Draws a wire as a smooth tube along its points, red where its tension reaches the reference.
/// Follows the wire by itself in each frame.
class WireRenderer : public hyxSDK::EventListener {
public:
    /// Draws `wire` under `parent`, with its points joined by `spline`, whose points are then the renderer's; null
    /// takes a cubic one. Throws `std::invalid_argument` for a null `wire` or `parent`.
    WireRenderer(hyxWire::Wire* wire, osg::Group* parent, hyxUtil::Spline* spline = nullptr);

    /// The tension in newtons that is drawn all red; 0, as at first, takes the largest tension that was seen so far.
    /// Throws `std::invalid_argument` below 0.
    void setReferenceMaxTension(double tension);
    double getReferenceMaxTension() const;

    /// Takes the wire out of the scene.
    void removeNotification() override;

protected:
    ~WireRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
