#pragma once

#include "platform/hyx/real.h"
#include "platform/hyx/string.h"
#include "platform/hyx/time_stamp.h"

namespace hyx {

/// The name by which a named object is found.
using Name = String;

}
