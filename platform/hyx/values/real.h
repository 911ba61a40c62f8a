// The number type that physics computes with.
#pragma once

namespace hyx {

using Real = double;
using UInt = unsigned long;
using Index = unsigned long;

} // namespace hyx
