// Finds what lies beside this library, wherever it was installed to.
#include "reference/machinery/files/own_files.h"

#include <dlfcn.h>

#include <filesystem>

namespace hyxOSG {

std::string ownFolder(std::string const& name) {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void const*>(&ownFolder), &info) || !info.dli_fname)
        return "";
    std::error_code error;
    auto const library = std::filesystem::absolute(info.dli_fname, error);
    auto const folder = library.parent_path() / "hyxOSG" / name;
    return std::filesystem::is_directory(folder, error) ? folder.string() : "";
}

} // namespace hyxOSG
