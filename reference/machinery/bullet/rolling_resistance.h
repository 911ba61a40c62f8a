// Friction against rolling.
#pragma once

#include "platform/hyx/values/real.h"

class btDispatcher;

namespace hyx {

/// Brakes bodies that roll: a torque of the rolling resistance (which the contact hook left in each point's spinning
/// friction) times the normal force of the last step. Bullet has a rolling friction of its own, but bounds it by an
/// impulse that knows nothing of the bodies' weight.
void applyRollingResistance(btDispatcher& dispatcher, Real timeStep);

} // namespace hyx
