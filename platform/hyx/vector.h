#pragma once

#include "platform/hyx/types.h"
#include "platform/hyx/vec3.h"

#include <vector>

namespace hyx {

/// A growing array.
template <class T>
class Vector : public std::vector<T> {
public:
  using std::vector<T>::vector;
};

/// A growing array of plain values in one block of memory.
template <class T>
class VectorPOD : public std::vector<T> {
public:
  using std::vector<T>::vector;
  T * ptr() { return this->data(); }
  T const * ptr() const { return this->data(); }
};

using Vec3Vector = Vector<Vec3>;
using RealVector = Vector<Real>;
using UInt32Vector = Vector<unsigned int>;

}
