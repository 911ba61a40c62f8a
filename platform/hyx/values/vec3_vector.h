// The list of points that crosses interfaces.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vector.h"

namespace hyx {

using Vec3Vector = Vector<Vec3>;

} // namespace hyx
