// Tries to reserve addresses.
#include "reference/machinery/context/driver_memory.h"

#include <sys/mman.h>
#include <sys/resource.h>

#include <new>

namespace hyxOSG {

void requireMemory(std::size_t size) {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return;
    void* const tried = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (tried == MAP_FAILED)
        throw std::bad_alloc();
    munmap(tried, size);
}

} // namespace hyxOSG
