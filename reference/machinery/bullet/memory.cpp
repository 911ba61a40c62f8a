// Has Bullet throw where the memory is short: it uses what it asks for without a look.
#include <LinearMath/btAlignedAllocator.h>

#include <cstdlib>
#include <new>

namespace {

void* allocate(std::size_t size) {
    void* const memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

[[maybe_unused]] bool const installed = [] {
    btAlignedAllocSetCustom(allocate, std::free);
    return true;
}();

} // namespace
