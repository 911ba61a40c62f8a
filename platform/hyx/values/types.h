// Short names of the plain number types.
#pragma once

#include "platform/hyx/objects/time_stamp.h"
#include "platform/hyx/values/real.h"
#include "platform/hyx/values/string.h"

namespace hyx {

/// The name by which a named object is found.
using Name = String;

} // namespace hyx
