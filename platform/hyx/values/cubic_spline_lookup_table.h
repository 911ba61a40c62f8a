// Tables of values between which a cubic spline is drawn.
#pragma once

#include "platform/hyx/values/serializable.h"

namespace hyx {

/// A function that is given by values at some places, as the library makes it.
class CubicSplineLookupTable : public hyxStream::Serializable {};

} // namespace hyx
