// Picking with rays through the physics.
#pragma once

#include "platform/hyxSDK/pick_result.h"

namespace osg {
class Camera;
} // namespace osg

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG::input {

/// What a ray meets in a simulation; empty for null.
hyxSDK::PickResult pickAlong(hyxSDK::Simulation const* simulation, hyx::Vec3 const& from, hyx::Vec3 const& to,
                             bool all);

/// What lies under a point of the window, in pixels from the lower left corner; empty for null.
hyxSDK::PickResult pickUnder(hyxSDK::Simulation const* simulation, osg::Camera const* camera, float x, float y,
                             bool all);

} // namespace hyxOSG::input
