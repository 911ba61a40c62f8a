// The list type for plain values.
#pragma once

#include <vector>

namespace hyx {

/// A growing array of plain values in one block of memory.
template <class T>
class VectorPOD : public std::vector<T> {
public:
    using std::vector<T>::vector;

    T* ptr() { return this->data(); }

    T const* ptr() const { return this->data(); }
};

} // namespace hyx
