// The list type of the library's interfaces.
#pragma once

#include "platform/hyx/values/real.h"

#include <vector>

namespace hyx {

/// A growing array.
template <class T>
class Vector : public std::vector<T> {
public:
    using std::vector<T>::vector;
};

using RealVector = Vector<Real>;
using UInt32Vector = Vector<unsigned int>;

} // namespace hyx
