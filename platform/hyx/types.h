#pragma once

#include "platform/hyx/string.h"

namespace hyx {

using Real = double;
using UInt = unsigned long;
using Index = unsigned long;

/// Simulated time in seconds since the start of the simulation.
using TimeStamp = double;

/// The name by which a named object is found.
using Name = String;

}
