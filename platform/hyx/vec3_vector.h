#pragma once

#include "platform/hyx/vec3.h"
#include "platform/hyx/vector.h"

namespace hyx {

using Vec3Vector = Vector<Vec3>;

}
