// Loads the reader of SDF files: its library would cost every start 20 ms.
#include "reference/hyxtavlang/late_reader.h"

#include <dlfcn.h>

#include <filesystem>

namespace hyxtavlang {
namespace {

LateReader& sdfReader() {
    Dl_info own{};
    dladdr(reinterpret_cast<void const*>(&isModelFile), &own);
    auto const beside = std::filesystem::absolute(own.dli_fname).parent_path() / "libhyx_sdf.so";
    void* const library = dlopen(beside.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const found = library ? dlsym(library, "hyxReadSdf") : nullptr;
    if (!found)
        throw ModelError(std::string("the reader of SDF files cannot be loaded: ") + dlerror());
    return **static_cast<LateReader* const*>(found);
}

} // namespace

ModelTree readSdf(std::string const& path, std::vector<std::string> const& searchPaths) {
    static LateReader& read = sdfReader();
    ModelTree tree;
    read(path, searchPaths, tree);
    return tree;
}

} // namespace hyxtavlang
