// Creating and checking the folder that files are written to.

#include "reference/hyxOSG/capture/output_folder.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace hyxOSG {

void prepareOutputFolder(std::string const& folder) {
    std::string const path = folder.empty() ? "." : folder;
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    std::error_code reason;
    if (!std::filesystem::is_directory(path)) {
        reason = failure ? failure : std::make_error_code(std::errc::not_a_directory);
    } else if (access(path.c_str(), W_OK | X_OK) != 0) {
        reason.assign(errno, std::generic_category());
    }
    if (reason) {
        throw std::filesystem::filesystem_error("cannot write to the folder", path, reason);
    }
}

} // namespace hyxOSG
