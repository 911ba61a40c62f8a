// Wires as plain lines.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxWire/wire.h"

#include <memory>

namespace osg {
class Group;
} // namespace osg

namespace hyxOSG {

/// Draws a wire as a plain line strip through its points, in one colour.
/// Follows the wire by itself in each frame.
class WireRendererOld : public hyxSDK::EventListener {
public:
    /// Draws `wire` under `parent`. Throws `std::invalid_argument` for null.
    WireRendererOld(hyxWire::Wire* wire, osg::Group* parent);

    /// Takes the wire out of the scene.
    void removeNotification() override;

protected:
    ~WireRendererOld() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
