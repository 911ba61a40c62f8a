// Pointer objects that show elements of native vectors: they follow the storage when it moves, and show nothing when
// their element is gone.
#pragma once

#include "binding/runtime/pointer_object.h"

#include <cstddef>

namespace containers {

// A vector as its storage lies now.
struct Storage {
    void const* vector;
    void* data;
    std::size_t bytes;
};

// From now on the view follows the element that it points to.
void watch(Storage const& storage, SwigPyObject* view);

// The same for a view that may point into an element that is watched.
void watch_inside(SwigPyObject* view);

// To be called after each operation that may have moved the storage or taken elements away.
void follow(Storage const& storage);

// The vectors have exchanged their elements.
void exchange(void const* vector, void const* other);

// The vector has ended.
void forget(void const* vector);

} // namespace containers
