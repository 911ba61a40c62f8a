// The type of points in simulated time.
#pragma once

namespace hyx {

/// Simulated time in seconds since the start of the simulation.
using TimeStamp = double;

} // namespace hyx
