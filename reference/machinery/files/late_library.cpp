// Loads libraries that lie beside this one.
#include "reference/machinery/files/late_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace hyx {

void* findLate(char const* library, char const* symbol, char const* purpose) {
    Dl_info own{};
    dladdr(reinterpret_cast<void const*>(&findLate), &own);
    auto const beside = std::filesystem::absolute(own.dli_fname).parent_path() / library;
    void* const loaded = dlopen(beside.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const found = loaded ? dlsym(loaded, symbol) : nullptr;
    if (!found)
        throw std::runtime_error(std::string(purpose) + " cannot be loaded: " + dlerror());
    return found;
}

} // namespace hyx
