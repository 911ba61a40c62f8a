// Looks before the graphics driver asks: drivers use what they allocate without a look.
#pragma once

#include <cstddef>

namespace hyxOSG {

constexpr std::size_t contextMemory =
    256 << 20; ///< bytes of addresses that a new context may take, stacks of threads among them
constexpr std::size_t frameMemory = 160 << 20; ///< bytes that a frame may add

/// Throws std::bad_alloc where the process's addresses are limited to less than it has and `size` bytes more.
void requireMemory(std::size_t size);

} // namespace hyxOSG
